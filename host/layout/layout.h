#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "formatlang/default_settings.h"
#include "host/layout/own_values.h"
#include "host/layout/source_place.h"
#include "settings/lvl_inf.h"
#include "values/attributes.h"
#include "values/counts.h"

// A layout: what a person writes down about a data file and its items. Names and descriptions are
// UTF-8, the texts of ranges code page 932 as the module takes them, paths as the file system does.
namespace korvex::host {

// How often an item repeats its values, at its place among the nested repeats.
struct RepeatSettings {
  RepeatLevel level{};
  std::int32_t count = 0;
  SourcePlace place = {};  // of the level
};

// What an item takes its values from: what the module knows, or what the program adds to it.
enum class ValueSource { initial, range, attribute_default, reference, enumeration, own };

// Where the texts of a range are; line 0 for one that is left out.
struct RangePlaces {
  SourcePlace format;
  SourcePlace start;
  SourcePlace end;
  SourcePlace increment;
};

// The values that an item gets.
struct ItemValues {
  ValueSource source = ValueSource::initial;
  RangeTexts texts;       // range
  RangeChoices choices;   // range; enumeration takes the end-exceeded action only
  std::string item_name;  // reference
  std::string file;       // enumeration
  std::optional<RepeatSettings> repeat;
  SourcePlace place;
  SourcePlace origin;                 // of the name in a reference, of the file in an enumeration
  RangePlaces places;                 // range
  std::vector<LayoutError> replaced;  // characters of its texts that are not stored as written

  OwnValues own;  // own
  WayRules way;
  EmptinessRules emptiness;
  std::optional<PlacedText> group;  // items of one group take one row
  std::optional<PlacedText> salt;   // in place of the item's name
  bool is_hidden = false;           // for other items only: records are written without it
  std::vector<OwnKey> own_keys;     // none: the module knows all

  // Whether a way of its own leads through the values.
  bool leads_through() const { return way.is_given() || group.has_value(); }
};

struct LayoutItem {
  ItemNumber number = ItemNumber::none;
  std::string name;
  std::string description;
  ItemAttributes attributes;
  bool has_invalid_digits = false;  // counts without decimals; the user is warned
  bool nullable = true;
  // Nothing keeps what the settings file holds. Shared by copies: a layout may have many items.
  std::shared_ptr<const ItemValues> values;
  std::vector<LayoutError> beyond_code_page;  // characters that only UTF-8 has
  SourcePlace place;

  bool is_hidden() const { return values != nullptr && values->is_hidden; }
};

struct Layout {
  std::string file;  // the layout file, as named by the user
  std::string text;  // what is in it
  LayoutKind kind{};
  RecordCount records;
  std::optional<RecordCount> own_records;  // that the file says
  SettingsLevel level{1};
  bool null_default = false;
  Quotation quotation = quotation::none;
  std::string table;  // UTF-8, of a database that is loaded; empty when the layout names none
  std::string data;
  std::string settings;
  std::string work;
  std::uint64_t seed = 0;
  std::string salt;      // UTF-8
  bool is_utf8 = false;  // texts hold any character, and sizes count characters
  std::int32_t sets_version = 1;
  // Sets of items in which the records are to differ, as far as they have values in all of them.
  std::vector<std::vector<PlacedText>> unique;
  SourcePlace records_place;  // line 0 where the command line says how many
  SourcePlace table_place;
  SourcePlace data_place;
  SourcePlace settings_place;  // of the data file's path where that names the settings, too
  std::vector<LayoutItem> items;
};

}  // namespace korvex::host
