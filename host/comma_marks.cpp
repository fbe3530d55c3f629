#include "host/comma_marks.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>

#include "format/fmt_file.h"
#include "format/record_text.h"
#include "generate/enumeration_value.h"
#include "platform/path.h"

namespace korvex::host {

namespace {

std::string marked(std::string text) {
  std::replace(text.begin(), text.end(), ',', comma_mark);
  return text;
}

bool has_mark(std::string_view text) { return text.find(comma_mark) != std::string_view::npos; }

ItemAttributes attributes_of(const FmtColRec& settings) {
  return {settings.attribute, settings.signed_flag, settings.length, settings.digits,
          settings.decimals};
}

// Only a list without a fault is worth a copy: reports about the others must name the user's file.
bool is_faultless(const std::string& text, const FmtColRec& settings) {
  const EnumerationRule rule(attributes_of(settings));
  std::string_view rest = text;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    if (!line.empty() && rule.check(line) != 0) return false;
  }
  return true;
}

class Marker {
 public:
  explicit Marker(const Layout& layout) : layout_(layout) {
    file_.set_run_mode(run_mode::settings_only);
    file_.set_paths(layout.settings, layout.work);
  }

  bool run() {
    if (file_.load(layout_.level, layout_.records, layout_.kind) <= 0) return false;
    for (const auto& column : file_.current_level()->columns) {
      if (!find_commas(*column)) return false;
    }
    for (FmtItemRec* element : fixed_) {
      store_field(element->text, marked(std::string(field_text(element->text))));
    }
    for (auto& [settings, text] : lists_) replace_list(*settings, text);
    return file_.save(layout_.quotation) >= 0;
  }

 private:
  // False when the mark's character is in use.
  bool find_commas(ClFmtColInf& column) {
    for (const auto& element : column.elements) {
      const std::string_view text = field_text(element->record.text);
      if (element->record.kind != format_kind::fixed) continue;
      if (has_mark(text)) return false;
      if (text.find(',') != std::string_view::npos) fixed_.push_back(&element->record);
    }
    if (column.record.generation_type != generation_type::enumeration) return true;
    std::ifstream stream(std::string(field_text(column.record.enumeration_path)), std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(stream)), {});
    if (has_mark(text)) return false;
    if (text.find(',') != std::string::npos && is_faultless(text, column.record)) {
      lists_.emplace(&column.record, std::move(text));
    }
    return true;
  }

  void replace_list(FmtColRec& settings, const std::string& text) const {
    const std::string path =
        platform::join_path(layout_.work, "list" + std::to_string(settings.item_number));
    std::ofstream(path, std::ios::binary) << marked(text);
    store_field(settings.enumeration_path, path);
  }

  const Layout& layout_;
  ClFmtFile file_;
  std::vector<FmtItemRec*> fixed_;
  std::map<FmtColRec*, std::string> lists_;
};

}  // namespace

bool mark_commas(const Layout& layout) { return Marker(layout).run(); }

}  // namespace korvex::host
