#include <poll.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <filesystem>
#include <functional>
#include <istream>
#include <ostream>

#include "host/commands/commands.h"
#include "host/engine/layout_messages.h"
#include "host/layout/layout_reader.h"
#include "host/layout/layout_writer.h"
#include "host/layout/new_item.h"
#include "host/layout/table_reader.h"
#include "host/process/exit_status.h"
#include "host/process/replaced_output.h"
#include "host/process/signals.h"
#include "host/sets/catalogue.h"
#include "host/sources/template_text.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

constexpr std::array<std::string_view, 3> kinds = {"record", "table", "iso"};

std::string take_kind(std::string_view text, std::string& kind) {
  if (std::find(kinds.begin(), kinds.end(), text) == kinds.end()) {
    return "one of " + list_names(kinds);
  }
  kind = text;
  return {};
}

std::string take_records(std::string_view text, RecordCount& records) {
  std::uint64_t value = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (failure != std::errc() || end != text.data() + text.size() || value > RecordCount::most) {
    return "a number from 0 to " + std::to_string(RecordCount::most);
  }
  records = RecordCount(value);
  return {};
}

// Asks on one stream and reads answers from the other. An end of the answers ends it all.
class Dialogue {
 public:
  Dialogue(std::istream& in, std::ostream& messages) : in_(in), messages_(messages) {}

  // `take` answers what was expected instead, and is asked again then.
  void ask(const std::string& question, const std::string& proposal,
           const std::function<std::string(std::string_view)>& take) {
    while (in_) {
      messages_ << question << (proposal.empty() ? "" : " [" + proposal + "]") << ": "
                << std::flush;
      std::string answer;
      // A terminal hands over a line at a time: what was not asked for yet waits there.
      if (!platform::wait_until_ready(STDIN_FILENO, POLLIN)) check_interruption();
      if (!std::getline(in_, answer)) return;
      const std::string expected = take(answer.empty() ? proposal : answer);
      if (expected.empty()) return;
      messages_ << "expected " << expected << "\n";
    }
  }

  bool has_ended() const { return !in_; }

 private:
  std::istream& in_;
  std::ostream& messages_;
};

std::string take_yes(std::string_view text, bool& is_yes) {
  constexpr std::array<std::string_view, 2> answers = {"yes", "no"};
  if (std::find(answers.begin(), answers.end(), text) == answers.end()) {
    return "one of " + list_names(answers);
  }
  is_yes = text == "yes";
  return {};
}

// A column of a built-in set: its name, and its language where it has several.
void ask_set(Dialogue& dialogue, NewValues& values) {
  std::string name;
  sets::Column column;
  bool needs_language = false;
  const auto take = [&](const std::string& language) -> std::string {
    const auto found = sets::find_column(name, language);
    if (const auto* fault = std::get_if<sets::Fault>(&found)) {
      needs_language = fault->key == sets::Fault::Key::language;
      constexpr std::string_view before = "expected ";
      return fault->text.substr(fault->text.find(before) + before.size());
    }
    column = std::get<sets::Column>(found);
    values.source = {{"type", toml_text("builtin")}, {"set", toml_text(name)}};
    if (!language.empty()) values.source.emplace_back("language", toml_text(language));
    return {};
  };
  dialogue.ask("    Set, as \"korvex sets\" lists them", "people.given",
               [&](std::string_view text) {
                 name = text;
                 const std::string fault = take("");
                 return needs_language ? std::string() : fault;
               });
  if (needs_language) {
    dialogue.ask("    Language", "en",
                 [&](std::string_view text) { return take(std::string(text)); });
  }
  if (column.table == nullptr) return;
  const sets::ValueTable table = sets::read_table(*column.table);
  for (std::size_t row = 0; row < table.row_count(); ++row) {
    values.note_size(table.value(row, column.column));
  }
}

// Texts of items that are there already.
std::string take_template(std::string_view text, const NewLayout& layout, NewValues& values) {
  std::vector<sources::TemplatePart> parts;
  if (const auto fault = sources::parse_template(text, parts)) return fault->text;
  for (const sources::TemplatePart& part : parts) {
    const bool is_there = part.item.empty() ||
                          std::any_of(layout.items.begin(), layout.items.end(),
                                      [&](const NewItem& item) { return item.name == part.item; });
    if (!is_there) return "items that are there already in place of " + part.item;
  }
  values.source = {{"type", toml_text("template")}, {"text", toml_text(text)}};
  return {};
}

// Templates and references find an item by its name, so no two may share one.
std::string reject_used_name(const NewLayout& layout, const NewItem& item) {
  const bool is_used = std::any_of(layout.items.begin(), layout.items.end(),
                                   [&](const NewItem& other) { return other.name == item.name; });
  return is_used ? "a name that no other item has" : "";
}

// Where the values of an item come from, in which order, and how many there are.
void ask_values(Dialogue& dialogue, const NewLayout& layout, NewItem& item) {
  std::vector<std::string_view> choices = {"range", "list"};
  if (is_character(item.attributes.attribute)) choices.insert(choices.end(), {"set", "template"});
  std::string_view kind;
  const std::string names = choices.size() == 2 ? "range, list" : "range, list, set, template";
  dialogue.ask("  Values (" + names + ")", "range", [&](std::string_view text) -> std::string {
    const auto found = std::find(choices.begin(), choices.end(), text);
    if (found == choices.end()) return "one of " + list_names(choices);
    kind = *found;
    return {};
  });
  if (kind == "list") {
    dialogue.ask("    Values, with commas", "",
                 [&](std::string_view text) { return take_list(text, item.values); });
  } else if (kind == "set") {
    ask_set(dialogue, item.values);
  } else if (kind == "template") {
    dialogue.ask("    Text, with items as {NAME}", "",
                 [&](std::string_view text) { return take_template(text, layout, item.values); });
  }
  if (kind != "template") {
    dialogue.ask("    Order (forward, shuffled, random, zipf)",
                 kind == "range" ? "shuffled" : "random",
                 [&](std::string_view text) { return take_order(text, item.values); });
  }
  dialogue.ask("    Share of empty values", "0",
               [&](std::string_view text) { return take_share(text, item.values); });
}

void ask_size(Dialogue& dialogue, NewItem& item) {
  const bool has_digits = needs_decimals(item.attributes);
  const std::int32_t proposal = std::max(has_digits ? 8 : 10, item.values.longest);
  dialogue.ask(has_digits ? "  Digits" : "  Length", std::to_string(proposal),
               [&](std::string_view text) { return take_size(text, item); });
  if (has_digits) {
    dialogue.ask("  Decimals among them", "0",
                 [&](std::string_view text) { return take_decimals(text, item); });
  }
}

void ask_items(Dialogue& dialogue, NewLayout& layout) {
  dialogue.ask("Values that look real (yes, no)", "no",
               [&](std::string_view text) { return take_yes(text, layout.is_believable); });
  while (!dialogue.has_ended()) {
    NewItem item;
    bool is_last = false;
    const std::string place = std::to_string(layout.items.size() + 1);
    dialogue.ask("Name of item " + place + (layout.items.empty() ? "" : ", empty to end"), "",
                 [&](std::string_view text) {
                   is_last = text.empty() && !layout.items.empty();
                   if (is_last) return std::string();
                   const std::string expected = take_name(text, item);
                   return expected.empty() ? reject_used_name(layout, item) : expected;
                 });
    if (is_last) return;
    dialogue.ask("  Attribute", "character",
                 [&](std::string_view text) { return take_attribute(text, item); });
    if (!dialogue.has_ended() && layout.is_believable) ask_values(dialogue, layout, item);
    if (!dialogue.has_ended() && needs_size(item.attributes)) ask_size(dialogue, item);
    if (!dialogue.has_ended()) layout.items.push_back(item);
  }
}

// What the options leave open. False when the answers ended too early.
bool ask(const NewOptions& options, NewLayout& layout, std::istream& in, std::ostream& messages) {
  Dialogue dialogue(in, messages);
  if (!options.kind) {
    dialogue.ask("Kind of file (record, table, iso)", layout.kind,
                 [&](std::string_view text) { return take_kind(text, layout.kind); });
  }
  if (!options.data) {
    dialogue.ask("Data file", layout.data, [&](std::string_view text) {
      layout.data = text;
      return std::string();
    });
  }
  if (!options.records) {
    dialogue.ask("Records", std::to_string(layout.records.number()),
                 [&](std::string_view text) { return take_records(text, layout.records); });
  }
  if (options.items.empty()) ask_items(dialogue, layout);
  return !dialogue.has_ended();
}

bool take_options(const NewOptions& options, NewLayout& layout, std::ostream& messages) {
  const auto reject = [&](const std::string& text, const std::string& expected) {
    messages << platform::printable(text) << ": expected " << expected << std::endl;
    return false;
  };
  if (options.kind) {
    const std::string expected = take_kind(*options.kind, layout.kind);
    if (!expected.empty()) return reject("--kind " + *options.kind, expected);
  }
  if (options.data) layout.data = *options.data;
  if (options.records) layout.records = *options.records;
  for (const std::string& text : options.items) {
    NewItem item;
    std::string expected = take_item(text, item);
    if (expected.empty()) expected = reject_used_name(layout, item);
    if (!expected.empty()) return reject("--item " + text, expected);
    layout.items.push_back(item);
  }
  return true;
}

}  // namespace

ExitStatus run_new(const NewOptions& options, std::istream* in, std::ostream& out,
                   std::ostream& messages) {
  std::error_code ignored;
  if (options.output != "-" && std::filesystem::exists(options.output, ignored)) {
    messages << platform::printable(options.output) << ": is there already, expected a new file"
             << std::endl;
    return ExitStatus::wrong_usage;
  }
  NewLayout layout;
  if (!take_options(options, layout, messages)) return ExitStatus::wrong_usage;
  if (in != nullptr && !ask(options, layout, *in, messages)) {
    messages << "\nthe answers ended, no layout was written" << std::endl;
    return ExitStatus::wrong_usage;
  }
  if (layout.items.empty()) {
    messages << "there is no item, expected --item NAME:ATTRIBUTE:SIZE or a terminal" << std::endl;
    return ExitStatus::wrong_usage;
  }
  const std::string text = layout_text(layout);
  // What the reader refuses now, say a data file in the layout's own place, is not written.
  const std::string name = options.output == "-" ? "layout.toml" : options.output;
  if (print_layout_errors(parse_layout(text, name, std::nullopt), messages)) {
    return ExitStatus::wrong_usage;
  }
  ReplacedOutput output(options.output, out);
  output.write(text);
  if (!output.finish(messages)) return ExitStatus::failed;
  if (options.output != "-") {
    const std::string written = platform::printable(options.output);
    const std::size_t count = layout.items.size();
    out << count << (count == 1 ? " item: " : " items: ") << written << "\n"
        << "next: korvex preview " << written << std::endl;
  }
  return ExitStatus::done;
}

}  // namespace korvex::host
