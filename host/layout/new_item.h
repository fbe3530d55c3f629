#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/layout/new_values.h"
#include "values/attributes.h"
#include "values/counts.h"

namespace korvex::host {

// An item that a person describes in a few words.
struct NewItem {
  std::string name;  // UTF-8
  ItemAttributes attributes;
  NewValues values;
};

// Which numbers a new item needs.
bool needs_size(const ItemAttributes& item);
bool needs_decimals(const ItemAttributes& item);

// The steps in which an item is described. Each answers what was expected instead, empty when the
// text was taken.
std::string take_name(std::string_view text, NewItem& item);
std::string take_attribute(std::string_view text, NewItem& item);
std::string take_size(std::string_view text, NewItem& item);
std::string take_decimals(std::string_view text, NewItem& item);

// The same in one text: "NAME:ATTRIBUTE:SIZE:DECIMALS".
std::string take_item(std::string_view text, NewItem& item);

// A layout with these items and values to start from, with a word on each key.
struct NewLayout {
  std::string kind = "record";
  std::string data = "data.csv";
  RecordCount records{1000};
  bool is_believable = false;  // has sources and ways, and takes any character
  std::vector<NewItem> items;
};
std::string layout_text(const NewLayout& layout);

}  // namespace korvex::host
