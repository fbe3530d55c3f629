#pragma once

// The numbers by which a dialog finds its controls: each form gives them to its widgets as the
// property `controlId`. A number that means something else in another dialog has a name for each
// meaning. All numbers of the forms are here, whether the code uses them or not.
namespace korvex {

namespace control_id {

// In every dialog.
inline constexpr int ok = 1;
inline constexpr int cancel = 2;
inline constexpr int help = 57670;

// Data Generation: the items.
inline constexpr int generation_group = 1017;
inline constexpr int items = 1029;
inline constexpr int setup = 1420;
inline constexpr int delete_settings = 1421;

// Data Generation: the repeat of the current item.
inline constexpr int repeat_group = 1506;
inline constexpr int repeats = 1018;
inline constexpr int level_label = 1507;
inline constexpr int level = 1008;
inline constexpr int level_stepper = 1009;
inline constexpr int count_label = 1508;
inline constexpr int count = 1010;
inline constexpr int count_stepper = 1011;
inline constexpr int update = 1026;

// Data Generation: the hidden controls.
inline constexpr int output_group = 1502;
inline constexpr int quotation_label = 1427;
inline constexpr int quotation = 1428;
inline constexpr int repeat_only = 1039;
inline constexpr int record_count_label = 1503;
inline constexpr int record_count = 1019;
inline constexpr int predicted_size_label = 1504;
inline constexpr int predicted_size = 1020;

// Setup Format: the item.
inline constexpr int item_group = 1038;
inline constexpr int item_name_caption = 1036;
inline constexpr int item_name = 1034;
inline constexpr int item_description_label = 1037;
inline constexpr int item_description = 1035;
inline constexpr int setup_group = 1027;

// Setup Format: enumeration and reference.
inline constexpr int enumeration_label = 1505;
inline constexpr int enumeration_name = 1012;
inline constexpr int select_file = 1013;
inline constexpr int browse_file = 1025;
inline constexpr int reference_label = 1003;
inline constexpr int reference = 1423;

// Setup Format and Item value update: the format and its values.
inline constexpr int type_label = 1424;
inline constexpr int type = 1422;
inline constexpr int custom_format = 1419;
inline constexpr int format_label = 1418;
inline constexpr int format = 1417;
inline constexpr int start_label = 1407;
inline constexpr int start = 1406;
inline constexpr int end_label = 1409;
inline constexpr int end = 1408;
inline constexpr int increment_label = 1411;
inline constexpr int increment = 1410;
inline constexpr int exceeded_initialize = 1416;
inline constexpr int exceeded_repeat = 1402;

// Setup Format: what is left of it.
inline constexpr int increment_stepper = 1014;
inline constexpr int exceeded_group = 1028;
inline constexpr int select_example = 1400;
inline constexpr int delete_format = 1401;
inline constexpr int store_format = 1033;
inline constexpr int previous_item = 1023;
inline constexpr int next_item = 1022;

// Select Format Example and Item value update: the list of examples.
inline constexpr int add_example = 1400;
inline constexpr int delete_example = 1401;

// Select Format Example.
inline constexpr int example_format_label = 1015;
inline constexpr int example_format = 1030;
inline constexpr int examples_group = 1017;
inline constexpr int examples = 1429;

// Select Item.
inline constexpr int selected_name_label = 1192;
inline constexpr int selected_name = 1272;
inline constexpr int selection_group = 1007;
inline constexpr int selection_items = 1114;

// Item value update.
inline constexpr int update_group = 1405;
inline constexpr int update_name_label = 1427;
inline constexpr int update_name = 1430;
inline constexpr int browse_items = 1431;
inline constexpr int update_description_label = 1236;
inline constexpr int update_description = 1428;
inline constexpr int update_format_group = 1412;
inline constexpr int update_examples_label = 1414;
inline constexpr int update_examples = 1413;
inline constexpr int update_exceeded_group = 1415;

// The progress window.
inline constexpr int progress_caption = 1043;
inline constexpr int progress_bar = 1041;
inline constexpr int progress_percentage = 1042;

}  // namespace control_id

}  // namespace korvex
