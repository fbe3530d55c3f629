#include "host/commands/new_command.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <filesystem>
#include <functional>
#include <istream>
#include <ostream>

#include "host/engine/layout_messages.h"
#include "host/layout/layout_reader.h"
#include "host/layout/new_item.h"
#include "host/layout/table_reader.h"
#include "host/process/exit_status.h"
#include "host/process/replaced_output.h"
#include "host/process/signals.h"
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

std::string take_records(std::string_view text, std::int32_t& records) {
  std::int32_t value = -1;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (failure != std::errc() || end != text.data() + text.size() || value < 0) {
    return "a number from 0 to " + std::to_string(largest_integer);
  }
  records = value;
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

void ask_items(Dialogue& dialogue, NewLayout& layout) {
  while (!dialogue.has_ended()) {
    NewItem item;
    bool is_last = false;
    const std::string place = std::to_string(layout.items.size() + 1);
    dialogue.ask("Name of item " + place + (layout.items.empty() ? "" : ", empty to end"), "",
                 [&](std::string_view text) {
                   is_last = text.empty() && !layout.items.empty();
                   return is_last ? std::string() : take_name(text, item);
                 });
    if (is_last) return;
    dialogue.ask("  Attribute", "character",
                 [&](std::string_view text) { return take_attribute(text, item); });
    if (!dialogue.has_ended() && needs_size(item.attributes)) {
      const bool has_digits = needs_decimals(item.attributes);
      dialogue.ask(has_digits ? "  Digits" : "  Length", has_digits ? "8" : "10",
                   [&](std::string_view text) { return take_size(text, item); });
      if (has_digits) {
        dialogue.ask("  Decimals among them", "0",
                     [&](std::string_view text) { return take_decimals(text, item); });
      }
    }
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
    dialogue.ask("Records", std::to_string(layout.records),
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
    const std::string expected = take_item(text, item);
    if (!expected.empty()) return reject("--item " + text, expected);
    layout.items.push_back(item);
  }
  return true;
}

}  // namespace

int run_new(const NewOptions& options, std::istream* in, std::ostream& out,
            std::ostream& messages) {
  std::error_code ignored;
  if (options.output != "-" && std::filesystem::exists(options.output, ignored)) {
    messages << platform::printable(options.output) << ": is there already, expected a new file"
             << std::endl;
    return exit_status::wrong_usage;
  }
  NewLayout layout;
  if (!take_options(options, layout, messages)) return exit_status::wrong_usage;
  if (in != nullptr && !ask(options, layout, *in, messages)) {
    messages << "\nthe answers ended, no layout was written" << std::endl;
    return exit_status::wrong_usage;
  }
  if (layout.items.empty()) {
    messages << "there is no item, expected --item NAME:ATTRIBUTE:SIZE or somebody to ask"
             << std::endl;
    return exit_status::wrong_usage;
  }
  const std::string text = layout_text(layout);
  // What the reader refuses now, say a data file in the layout's own place, is not written.
  const std::string name = options.output == "-" ? "layout.toml" : options.output;
  if (print_layout_errors(parse_layout(text, name, std::nullopt), messages)) {
    return exit_status::wrong_usage;
  }
  ReplacedOutput output(options.output, out);
  output.write(text);
  output.finish();
  if (output.failure().empty()) return exit_status::done;
  messages << output.failure() << std::endl;
  return exit_status::failed;
}

}  // namespace korvex::host
