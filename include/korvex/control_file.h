#ifndef KORVEX_CONTROL_FILE_H
#define KORVEX_CONTROL_FILE_H

#include <assert.h>
#include <stddef.h>
#include <stdint.h>

/*
 * The control file, which a host program writes before each call.
 *
 * It begins with a header. In the short form, which DGCreateData reads, 32-bit item numbers follow;
 * in the long form, which the other functions read, structs of items. The header says how many.
 * What comes after them is not read. Nothing in the file says which form it has: given the other
 * one, a function takes its bytes for items.
 *
 * The structs are the bytes of the file, without padding. Numbers are little-endian; names and
 * descriptions are in code page 932, paths are bytes as the file system takes them. Each text ends
 * with a zero byte. Set reserved fields to zero.
 */

/* The sizes of texts, with their terminating zero. */
#define KORVEX_PATH_SIZE 256
#define KORVEX_NAME_SIZE 64
#define KORVEX_DESCRIPTION_SIZE 28

#define KORVEX_MAX_RECORDS INT32_MAX
#define KORVEX_MAX_DIGITS 18 /* of a number; more in an item are allowed, but never filled */

/* What is generated, and with it the word for an item in messages. */
enum korvex_layout_kind {
  korvex_layout_record_file = 1, /* "Item" */
  korvex_layout_table = 2,       /* "Column" */
  korvex_layout_iso = 3          /* "Column"; lines end without a comma */
};

/*
 * What kind of data an item holds. A number without a name behaves as one with a name: 2 and 3 as
 * character, 5 and 13 to 18 as decimal, 7 as plain_character, 12 as national, 20 to 22 and 25 to 27
 * as number. 8 to 10 are numbers without a default format and without value lists. 29 and 30 take
 * no format. Any other number is an error.
 */
enum korvex_attribute {
  korvex_attribute_character = 1,       /* text, in quotation marks when those are on */
  korvex_attribute_decimal = 4,         /* a number with the item's digits and decimals */
  korvex_attribute_plain_character = 6, /* text, never in quotation marks */
  korvex_attribute_national = 11,       /* full-width characters, in quotation marks as character */
  korvex_attribute_number = 19,         /* as decimal; text when the item has no digits */
  korvex_attribute_integer = 23,        /* by default from 1 to 2147483647 */
  korvex_attribute_small_integer = 24,  /* by default from 1 to 32767 */
  korvex_attribute_date = 28,
  korvex_attribute_time = 31,
  korvex_attribute_timestamp = 32,
  korvex_attribute_highest = korvex_attribute_timestamp
};

struct korvex_control_header {
  /* How many records to generate; for DGReplaceData the position of the item, from 1. */
  int32_t records;
  int32_t layout_kind; /* enum korvex_layout_kind */
  /* 1: items that may be NULL and have no settings get an empty value when a dialog or the count
     reads the settings. Not for record files. */
  int32_t null_default;
  int32_t host_value; /* the host's own; nothing depends on it */
  int32_t level;      /* which set of settings in the settings file to use; usually 1 */
  int32_t item_count; /* how many items or item numbers follow */
  char data_path[KORVEX_PATH_SIZE];
  char settings_path[KORVEX_PATH_SIZE];
  char work_folder[KORVEX_PATH_SIZE]; /* for the log and temporary files */
  char reserved[228];
};

/*
 * An item of the long form. Settings fit it if it still has the attribute and the digits with which
 * they were saved (for text without digits the length; in a table date and timestamp fit each
 * other). When the settings of one item do not fit, the functions that read the long form delete
 * the whole settings file.
 */
struct korvex_control_item {
  int32_t item_number; /* by which the settings find the item; no two items have the same */
  char name[KORVEX_NAME_SIZE];
  char description[KORVEX_DESCRIPTION_SIZE];
  int32_t attribute;   /* enum korvex_attribute */
  int32_t signed_flag; /* not 0: values may be negative; attributes 1 to 3 always count as signed */
  /* In bytes. Of a number its digits, and one each for a sign and a point; of national text twice
     its digits; of all others as many as the digits. */
  int32_t length;
  /* Of a number its digits, of a text its characters (0: as many as the length). Integer has 10,
     small integer 5, date 8, time 6 and timestamp 15. */
  int32_t digits;
  int32_t decimals;   /* how many of the digits follow the point; more than the digits count as 0 */
  int32_t host_value; /* the host's own; nothing depends on it */
  int32_t null_allowed; /* 1: the item may stay without a value */
  char reserved[12];
};

static_assert(sizeof(struct korvex_control_header) == 1020, "a control file's header");
static_assert(offsetof(struct korvex_control_header, data_path) == 24, "a control file's header");
static_assert(sizeof(struct korvex_control_item) == 136, "a control file's item");
static_assert(offsetof(struct korvex_control_item, attribute) == 96, "a control file's item");

#endif
