#include "host/commands/report_page.h"

#include <algorithm>
#include <cstdio>

#include "platform/printable_text.h"
#include "platform/utf8.h"

namespace korvex::host {

namespace {

// Of the boxes in the picture of the tables, in its own units.
constexpr std::size_t box_width = 190;
constexpr std::size_t box_height = 46;
constexpr std::size_t gap_across = 70;
constexpr std::size_t gap_down = 18;
constexpr std::size_t longest_box_name = 24;
constexpr std::size_t bar_width = 5;
constexpr std::size_t picture_height = 30;

constexpr const char* style = R"(
:root{color-scheme:light dark}
body{font:16px/1.4 system-ui,sans-serif;margin:0 auto;padding:1rem;max-width:80rem}
.wide{overflow-x:auto}
table{border-collapse:collapse;font-size:.85rem;margin:.5rem 0}
th,td{border-bottom:1px solid #8886;padding:.25rem .6rem;text-align:left;vertical-align:top}
td{overflow-wrap:anywhere;max-width:22rem}
td.n{text-align:right;white-space:nowrap}
td b{white-space:nowrap}
td.made{min-width:13rem}
.none,.way{opacity:.65}
svg{max-width:none}
svg .bar{fill:#4a7fb5}
svg .box{fill:#4a7fb522;stroke:#4a7fb5}
svg .key{fill:none;stroke:#888;stroke-width:1.3}
svg text{font:13px system-ui,sans-serif;fill:currentColor}
@media print{body{max-width:none;font-size:10pt}section{break-inside:avoid-page}.wide{overflow:visible}}
)";

// A text from outside: it shows as it is, whatever a browser would make of it.
std::string escaped(std::string_view text) {
  std::string out;
  for (const char letter : platform::printable(text)) {
    switch (letter) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&#39;";
        break;
      default:
        out += letter;
    }
  }
  return out;
}

std::string cell(const std::string& content, const char* kind = "") {
  return std::string("<td") + (*kind == '\0' ? "" : std::string(" class=\"") + kind + "\"") + ">" +
         content + "</td>";
}

std::string percent(std::uint64_t part, std::uint64_t whole) {
  if (part == 0 || whole == 0) return "0 %";
  char text[16];
  std::snprintf(text, sizeof text, "%.1f %%",
                100.0 * static_cast<double>(part) / static_cast<double>(whole));
  return text;
}

std::string picture(const std::vector<Bar>& bars) {
  if (bars.empty()) return {};
  const std::string height = std::to_string(picture_height);
  std::string out = "<svg role=\"img\" width=\"" + std::to_string(bars.size() * bar_width) +
                    "\" height=\"" + height + "\">";
  for (std::size_t i = 0; i < bars.size(); ++i) {
    const auto size = static_cast<std::size_t>(bars[i].height * picture_height + 0.5);
    const std::size_t shown = bars[i].height > 0 ? std::max<std::size_t>(size, 1) : 0;
    out += "<rect class=\"bar\" x=\"" + std::to_string(i * bar_width) + "\" y=\"" +
           std::to_string(picture_height - shown) + "\" width=\"" + std::to_string(bar_width - 1) +
           "\" height=\"" + std::to_string(shown) + "\">" +
           (bars[i].label.empty() ? "" : "<title>" + escaped(bars[i].label) + "</title>") +
           "</rect>";
  }
  return out + "</svg>";
}

// In which column of boxes each table is: after its parents. A key that closes a circle is left
// aside.
class Depths {
 public:
  explicit Depths(const std::vector<ReportedTable>& tables)
      : tables_(tables), depths_(tables.size(), 0), states_(tables.size(), State::unknown) {
    for (std::size_t i = 0; i < tables.size(); ++i) find(i);
  }

  const std::vector<std::size_t>& all() const { return depths_; }

 private:
  enum class State { unknown, being_found, known };

  void find(std::size_t table) {
    if (states_[table] != State::unknown) return;
    states_[table] = State::being_found;
    for (const std::size_t parent : tables_[table].parents) {
      find(parent);
      if (states_[parent] == State::being_found) continue;
      depths_[table] = std::max(depths_[table], depths_[parent] + 1);
    }
    states_[table] = State::known;
  }

  const std::vector<ReportedTable>& tables_;
  std::vector<std::size_t> depths_;
  std::vector<State> states_;
};

std::string map_of(const std::vector<ReportedTable>& tables) {
  const Depths found(tables);
  const std::vector<std::size_t>& depths = found.all();
  std::vector<std::size_t> filled(tables.size() + 1, 0);
  std::vector<std::pair<std::size_t, std::size_t>> corners;
  std::size_t width = 0;
  std::size_t height = 0;
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const std::size_t x = 2 + depths[i] * (box_width + gap_across);
    const std::size_t y = 2 + filled[depths[i]]++ * (box_height + gap_down);
    corners.emplace_back(x, y);
    width = std::max(width, x + box_width + gap_across / 2);
    height = std::max(height, y + box_height + gap_down);
  }
  std::string out =
      "<div class=\"wide\"><svg role=\"img\" aria-label=\"tables and keys\" width=\"" +
      std::to_string(width) + "\" height=\"" + std::to_string(height) + "\">";
  for (std::size_t i = 0; i < tables.size(); ++i) {
    for (const std::size_t parent : tables[i].parents) {
      const std::size_t from_x = corners[i].first + (parent == i ? box_width : 0);
      const std::size_t from_y = corners[i].second + box_height / 2;
      const std::size_t to_x = corners[parent].first + box_width;
      const std::size_t to_y = corners[parent].second + box_height / (parent == i ? 4 : 2);
      const std::size_t bend = gap_across / 2;
      const std::string first =
          std::to_string(parent == i ? from_x + bend : from_x - std::min(from_x, bend));
      out += "<path class=\"key\" d=\"M" + std::to_string(from_x) + " " + std::to_string(from_y) +
             " C" + first + " " + std::to_string(from_y) + " " + std::to_string(to_x + bend) + " " +
             std::to_string(to_y) + " " + std::to_string(to_x) + " " + std::to_string(to_y) +
             "\"/><circle cx=\"" + std::to_string(to_x) + "\" cy=\"" + std::to_string(to_y) +
             "\" r=\"3\" class=\"bar\"/>";
    }
  }
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const auto& [x, y] = corners[i];
    const std::string left = std::to_string(x + 8);
    out += "<a href=\"#t" + std::to_string(i) + "\"><rect class=\"box\" rx=\"5\" x=\"" +
           std::to_string(x) + "\" y=\"" + std::to_string(y) + "\" width=\"" +
           std::to_string(box_width) + "\" height=\"" + std::to_string(box_height) + "\"><title>" +
           escaped(tables[i].name) + "</title></rect><text x=\"" + left + "\" y=\"" +
           std::to_string(y + 19) + "\" font-weight=\"bold\">" +
           escaped(platform::cut_text(tables[i].name, longest_box_name)) + "</text><text x=\"" +
           left + "\" y=\"" + std::to_string(y + 37) + "\">" + std::to_string(tables[i].records) +
           " records</text></a>";
  }
  return out + "</svg></div>\n";
}

std::string columns_of(const ReportedTable& table) {
  std::string out =
      "<div class=\"wide\"><table><tr><th>Column<th>Source and way<th>No value<th>Different"
      "<th>Smallest<th>Largest<th>Distribution</tr>\n";
  for (const ReportedColumn& column : table.columns) {
    const ColumnSummary& summary = column.summary;
    out += "<tr>" + cell("<b>" + escaped(column.name) + "</b>") +
           cell(escaped(column.source) + "<br><span class=\"way\">" + escaped(column.course) +
                    "</span>",
                "made") +
           cell(percent(summary.empty(), summary.records()), "n") +
           cell(std::to_string(summary.different()), "n") + cell(escaped(summary.smallest())) +
           cell(escaped(summary.largest())) + cell(picture(summary.picture())) + "</tr>\n";
  }
  return out + "</table></div>\n";
}

std::string samples_of(const ReportedTable& table) {
  std::string out = "<div class=\"wide\"><table><tr>";
  for (const ReportedColumn& column : table.columns) out += "<th>" + escaped(column.name);
  out += "</tr>\n";
  for (const std::vector<std::string>& row : table.samples) {
    out += "<tr>";
    for (const std::string& value : row) {
      out += value.empty() ? cell("no value", "none") : cell(escaped(value));
    }
    out += "</tr>\n";
  }
  return out + "</table></div>\n";
}

}  // namespace

std::string report_page(const std::string& title, const std::vector<ReportedTable>& tables) {
  std::string out =
      "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\">"
      "<meta name=\"viewport\" content=\"width=device-width,initial-scale=1\">"
      "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src "
      "'unsafe-inline'\"><title>" +
      escaped(title) + "</title><style>" + style + "</style></head><body>\n<h1>" + escaped(title) +
      "</h1>\n";
  out += map_of(tables);
  for (std::size_t i = 0; i < tables.size(); ++i) {
    const ReportedTable& table = tables[i];
    out += "<section id=\"t" + std::to_string(i) + "\"><h2>" + escaped(table.name) + "</h2><p>" +
           std::to_string(table.records) + " records" +
           (table.note.empty() ? "" : "; " + escaped(table.note)) + "</p>\n" + columns_of(table) +
           samples_of(table) + "</section>\n";
  }
  return out + "</body></html>\n";
}

}  // namespace korvex::host
