#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "format/col_inf.h"
#include "format/lvl_inf.h"
#include "generate/item_generator.h"
#include "generate/record_assembler.h"

namespace korvex::test {

// What a person enters for one item.
struct ItemSettings {
  ItemAttributes item;
  RangeTexts texts;
  std::int32_t action = exceeded_action::repeat;
};

// The checked settings; null when a check refuses them, whose code `refusal` then receives.
inline std::unique_ptr<ClFmtColInf> try_column(const ItemSettings& settings,
                                               std::int32_t& refusal) {
  ClFmtLvlInf level;
  std::int32_t variables = 0;
  refusal =
      level.check_and_store(1, settings.item, settings.texts, {settings.action, 0}, variables);
  return refusal < 0 ? nullptr : std::move(level.columns.front());
}

inline std::unique_ptr<ClFmtColInf> make_column(const ItemSettings& settings) {
  std::int32_t refusal = 0;
  auto column = try_column(settings, refusal);
  if (!column) {
    throw std::invalid_argument(settings.texts.format + " is refused: " + std::to_string(refusal));
  }
  return column;
}

// The lines of a file with this one item, without their line ends, as far as the run goes.
struct GeneratedLines {
  std::vector<std::string> lines;
  std::int32_t result = 0;
};

inline GeneratedLines generate_lines(const ClFmtColInf& column, std::int32_t layout_kind,
                                     bool quotation, int records) {
  ItemGenerator item(column, layout_kind, quotation);
  RecordAssembler assembler;
  assembler.add_field(item);
  LineBlock block(0);
  GeneratedLines generated;
  for (int done = 0; done < records; ++done) {
    generated.result = assembler.assemble(block);
    if (generated.result != 0) break;
    generated.lines.emplace_back(block.cursor() - block.line_size(), block.line_size());
    block.finish_line();
    if (done % 3 == 0) block.remove_front(block.finished().size());
  }
  return generated;
}

// The fields of so many records, without their commas, with "|" in between; the code of a run that
// fails stands at the end.
inline std::string fields(const ClFmtColInf& column, int records) {
  const GeneratedLines generated = generate_lines(column, 1, false, records);
  std::string text;
  for (const std::string& line : generated.lines) text += line.substr(0, line.size() - 1) + "|";
  if (generated.result != 0) return text + std::to_string(generated.result);
  text.pop_back();
  return text;
}

// Items that hold whatever the tables put into them.
inline constexpr ItemAttributes unsigned_item = {4, 0, 20, 18, 0};
inline constexpr ItemAttributes signed_item = {4, 1, 20, 18, 0};
inline constexpr ItemAttributes character_item = {1, 1, 128, 128, 0};
inline constexpr ItemAttributes national_item = {11, 0, 128, 64, 0};
inline constexpr ItemAttributes date_item = {28, 0, 8, 8, 0};
inline constexpr ItemAttributes time_item = {31, 0, 6, 6, 0};
inline constexpr ItemAttributes timestamp_item = {32, 0, 15, 15, 0};

}  // namespace korvex::test
