#include "host/records/random_layout.h"

#include "host/ways/draw.h"
#include "support/bytes.h"

namespace korvex::test {
namespace {

using Texts = std::vector<std::string>;

std::string in_quotes(const std::string& text) { return '"' + text + '"'; }

class Table {
 public:
  Table(std::string prefix, std::uint64_t seed) : prefix_(std::move(prefix)), key_{seed} {}

  std::uint64_t draw(std::uint64_t bound) { return ways::draw_below(key_, drawn_++, bound); }
  std::string draw_of(const Texts& texts) { return texts[draw(texts.size())]; }

  // Of the texts that it can have, some may be named in conditions.
  std::string add(const std::string& values, const std::string& emptiness = "",
                  const std::string& texts = "") {
    const std::string name = prefix_ + std::to_string(items.size());
    if (!texts.empty()) conditions_.push_back(name + " = [" + texts + "]");
    items.push_back(layout_item(name, values + emptiness));
    names_.push_back(name);
    if (emptiness.empty()) full_.push_back(name);
    return name;
  }

  std::string draw_emptiness() {
    switch (draw(names_.empty() ? 2 : 10)) {
      case 0:
        return ", empty = " + draw_of({"0.01", "0.3", "1"});
      case 2:
        return ", empty_with = " + in_quotes(draw_of(names_));
      case 3:
        return conditions_.empty() ? "" : ", when = { " + draw_of(conditions_) + " }";
      default:
        return "";
    }
  }

  std::string draw_end() { return draw_of({"", "", R"(, exceeded = "initialize")"}); }
  // What is drawn has no end.
  std::string draw_draw() {
    return draw_of({R"(, order = "random")", R"(, order = "zipf", skew = 0.8)"});
  }
  std::string draw_way() {
    if (draw(5) < 2) return draw_draw();
    return draw_end() + draw_of({"", R"(, order = "shuffled")", R"(, order = "shuffled")"});
  }
  // The same of a type that takes no exceeded.
  std::string draw_order() {
    return draw(5) < 2 ? draw_draw() : draw_of({"", R"(, order = "shuffled")"});
  }

  std::string draw_range() {
    const std::uint64_t first = draw(40);
    return R"(type = "range", format = "%3U", start = )" + std::to_string(first) +
           ", end = " + std::to_string(first + 1 + draw(90));
  }

  std::string draw_texts() {
    return draw_of({R"("a", "A", "b")", R"("a", "b", "a", "c", "")", R"("1", "12", "11", "2")",
                    R"("Ä", "é", "山")", R"("10", "20", "30")", R"("x", "x-", "-")"});
  }
  std::string draw_list() { return R"(type = "list", values = [)" + draw_texts() + "]"; }

  void add_plain() {
    add(draw_range() + draw_way(), draw_emptiness());
    add(R"(type = "range", format = "%1s%1U", start = "a,1", end = ")" +
            draw_of({"c,9", "z,4", "b,2"}) + '"' + draw_way(),
        draw_emptiness());
    add(R"(type = "list", values = ["a", "b", "c"], weights = [1, 0, 3])", draw_emptiness(),
        R"("a", "b")");
    for (int i = 0; i < 2; ++i) {
      const std::string texts = draw_texts();
      add(R"(type = "list", values = [)" + texts + "]" + draw_way(), draw_emptiness(),
          texts.substr(0, texts.find(',')));
    }
    add(draw_range() + draw_end());
    add(R"(type = "enumeration", file = "values.txt")" + draw_way(), "", R"("x", "z")");
  }

  void add_joint() {
    for (int i = 0; i < 2; ++i) {
      add(draw_list() + draw_end() + R"(, joint = "J")", draw(5) == 0 ? draw_emptiness() : "");
    }
  }

  void add_repeats() {
    if (draw(2) == 0) return;
    for (int level = 1; level <= 2; ++level) {
      add(R"(type = "range", format = "%1U", start = 1, end = 3, repeat = { level = )" +
          std::to_string(level) + ", count = " + std::to_string(1 + draw(2)) + " }");
    }
  }

  void add_made() {
    const std::string number = add(draw_range() + draw_end());
    add(R"(type = "offset", of = )" + in_quotes(number) + ", from = " + draw_of({"-2", "2"}) +
            ", to = " + draw_of({"2", "3"}),
        draw_emptiness());
    add(R"(type = "reference", item = )" + in_quotes(number) + draw_order());
    const Texts before = names_;
    for (int i = 0; i < 3; ++i) {
      std::string text = draw_of({"", "", "-", "x"});
      for (std::uint64_t parts = 1 + draw(3); parts > 0; --parts) {
        text += "{" + draw_of(before) + draw_of({"", "", "", "|lower", "|ascii"}) + "}" +
                draw_of({"", "", "-", ".", "1"});
      }
      add(R"(type = "template", text = )" + in_quotes(text), draw_emptiness());
    }
    add(R"(type = "template", text = "{)" + draw_of(names_) + draw_of({"", "|lower"}) + R"(}")");
  }

  // An item that no emptiness makes unfit for keys.
  std::string draw_full() { return draw_of(full_); }

  Texts items;

 private:
  std::string prefix_;
  ways::Key key_;
  std::uint64_t drawn_ = 0;
  Texts names_;
  Texts full_;
  Texts conditions_;
};

}  // namespace

std::string layout_item(const std::string& name, const std::string& values) {
  return "[[item]]\nname = \"" + name + "\"\nattribute = \"character\"\nlength = 200\nvalues = { " +
         values + " }\n";
}

void RandomLayout::write(const std::string& folder) const {
  std::string text = "[layout]\nkind = \"table\"\nencoding = \"utf-8\"\ndata = \"d.csv\"\n" +
                     more_keys + "\nrecords = " + std::to_string(records) + "\n";
  for (const std::string& item : items) text += item;
  write_file(folder + "/" + file, text);
  write_file(folder + "/values.txt", "x\r\ny\r\nx\r\nz\r\n");
}

RandomTables draw_tight_tables(std::uint64_t seed) {
  Table draws("", seed);
  RandomTables tables = {{"parents.toml", 30 + draws.draw(30), "", {}},
                         {"children.toml", 300 + draws.draw(300), "", {}}};
  const auto item = [](const std::string& name, const std::string& keys,
                       const std::string& values) {
    return "[[item]]\nname = \"" + name + "\"\n" + keys + "\nvalues = { " + values + " }\n";
  };
  const auto number = [&](const Texts& digits) {
    return "attribute = \"decimal\"\ndigits = " + draws.draw_of(digits) +
           draws.draw_of({"", "\nsigned = true"});
  };
  const auto text = [&](const Texts& lengths) {
    return "attribute = \"character\"\nlength = " + draws.draw_of(lengths);
  };
  const std::string date = "attribute = \"date\"";
  const std::string from_parents = R"(type = "key", layout = "parents.toml", item = )";
  const std::string from_children = R"(layout = "children.toml", key = "KEY")";
  const std::string first = std::to_string(draws.draw(950));
  tables.parents.items = {
      item("ID", number({"3"}),
           R"(type = "range", format = "%3U", start = )" + first +
               R"(, end = 999, order = "shuffled")"),
      item("NAME", text({"5"}), R"(type = "list", values = ["a", "bcd", "éé", "ŉß", "山"])"),
      item("COUNT", number({"2", "2", "2", "1"}), R"(type = "count", )" + from_children),
      item("SUM", number({"5", "6", "4"}), R"(type = "sum", item = "OFF", )" + from_children),
      item("LAST", number({"4", "4", "3"}), R"(type = "most", item = "OFF", )" + from_children)};
  tables.children.items = {
      item("KEY", number({"3", "4", "4", "2"}),
           from_parents + R"("ID", each = [0, 40], group = "G")"),
      item("NAME", text({"4", "5", "5", "2"}), from_parents + R"("NAME", group = "G")"),
      item("NO", number({"2", "2", "3", "1"}), R"(type = "line", of = "KEY")"),
      item("OFF", number({"4", "4", "4", "3"}),
           R"(type = "offset", of = "KEY", from = )" + draws.draw_of({"-3", "0", "1"}) +
               ", to = " + draws.draw_of({"1", "20"})),
      item("COPY", number({"4", "5", "5", "3"}), R"(type = "reference", item = "OFF")"),
      item("DAY", date, R"(type = "default")"),
      item(
          "DUE", date,
          R"(type = "offset", of = "DAY", from = 1, to = )" + draws.draw_of({"9", "9", "2930000"})),
      item("TEXT", text({"9", "10", "12", "7"}),
           R"(type = "template", text = "{NAME|)" + draws.draw_of({"upper", "ascii"}) +
               R"(}{OFF}")")};
  return tables;
}

RandomTables draw_tables(std::uint64_t seed) {
  Table parents("P", 2 * seed);
  Table children("C", 2 * seed + 1);
  RandomTables tables = {{"parents.toml", 40 + parents.draw(20), "", {}},
                         {"children.toml", 40 + children.draw(80), "", {}}};
  parents.add_plain();
  parents.add_joint();
  parents.add_made();
  const std::string key_to_parents = R"(type = "key", layout = "parents.toml", item = )";
  parents.add(key_to_parents + in_quotes(parents.draw_full()) +
              parents.draw_of({"", ", each = 2", ", each = [1, 5]"}));

  children.add_plain();
  children.add_joint();
  children.add_repeats();
  const std::string each =
      children.draw_of({"[0, 3]", "[0, 9]", R"({ least = 0, most = 200, shape = "zipf" })"});
  const std::string key = children.add(key_to_parents + in_quotes(parents.draw_full()) +
                                       ", each = " + each + R"(, group = "G")");
  children.add(key_to_parents + in_quotes(parents.draw_full()) + R"(, group = "G")");
  children.add(R"(type = "line", of = )" + in_quotes(key), children.draw_emptiness());
  children.add(children.draw_list() + ", within = " + in_quotes(key));
  children.add(R"(type = "range", format = "%2U", start = 1, end = 9, within = )" + in_quotes(key));
  children.add(key_to_parents + in_quotes(parents.draw_full()) + children.draw_order(),
               children.draw_emptiness());
  children.add_made();

  for (const char* fold : {"count", "least", "most"}) {
    parents.add("type = " + in_quotes(fold) + R"(, layout = "children.toml", key = )" +
                    in_quotes(key) + ", item = " + in_quotes(children.draw_full()),
                parents.draw_emptiness());
  }
  tables.parents.items = parents.items;
  tables.children.items = children.items;
  return tables;
}

}  // namespace korvex::test
