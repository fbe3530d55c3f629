#include "host/commands/program.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <numeric>
#include <ostream>
#include <sstream>
#include <string_view>
#include <tuple>

#include "host/commands/command_list.h"
#include "host/commands/commands.h"
#include "host/commands/common_options.h"
#include "host/commands/layout_commands.h"
#include "host/commands/part_commands.h"
#include "host/commands/show.h"
#include "host/layout/table_reader.h"
#include "host/process/exit_status.h"
#include "platform/path.h"
#include "platform/printable_text.h"

namespace korvex::host {

namespace {

constexpr const char* version_text = "korvex " KORVEX_VERSION;

void add_generate_options(CLI::App& command, GenerateOptions& options) {
  add_layout(command, options.layout);
  add_records(command, options.records);
  add_part(command, options.part, options.force);
  add_jobs(command, options.jobs);
  command.add_option_function<std::int32_t>(
      "--output-option",
      [&options](std::int32_t number) { options.output_option = OutputOption{number}; },
      "2 ends the data file below 2 GB, asks before repeats give more records than requested, and "
      "gives the window a Cancel button (default: 0)");
  CLI::Option* keep = command.add_flag(
      "--keep-settings", options.keep_settings,
      "generate from the settings file as it is, without the values in the layout");
  command
      .add_flag("--settings-only", options.settings_only,
                "write the settings file and generate no data")
      ->excludes(keep);
  command.add_flag("--quiet", options.quiet, "print no line about the result");
  command.add_flag("--window", options.window, "show progress and messages on the desktop");
}

void add_count_options(CLI::App& command, CountOptions& options) {
  add_layout(command, options.layout);
  add_records(command, options.records);
  command.add_flag("--window", options.window, "show messages on the desktop");
}

void add_import_options(CLI::App& command, ImportOptions& options) {
  command.add_option("DATABASE", options.database, "sqlite:FILE or postgresql:CONNINFO")
      ->required();
  command.add_option("TABLE", options.table, "table or view (default: all tables)");
  command.add_option(
      "-o,--output", options.output,
      "layout file to write; lists go to its folder; - for standard output (default); for all "
      "tables: the folder for them");
  command
      .add_option("--records", options.records,
                  "number of records (default: 1000; for all "
                  "tables: numbers that fit together)")
      ->check(number_from(1));
  command.add_flag("--force", options.force, "replace files that exist");
  WholeDatabaseOptions& whole = options.whole;
  command.add_option("--tables", whole.tables, "only these tables, as in 'a,b*'");
  command.add_option("--except", whole.except, "not these; others refer to their existing rows");
  command.add_option("--keep", whole.keep, "tables whose rows stay as they are");
  command
      .add_option("--scale", whole.scale, "number of records, as a multiple of the existing rows")
      ->check(CLI::PositiveNumber);
  command.add_flag("--plain", whole.is_plain, "no guesses by the names of columns");
}

void add_load_options(CLI::App& command, LoadOptions& options) {
  add_layouts(command, options.layout);
  command.add_option("DATABASE", options.database, "sqlite:FILE or postgresql:CONNINFO")
      ->required();
  command.add_option("TABLE", options.table, "table that gets the records (default: the layout's)");
  add_records(command, options.records);
  command.add_flag("--truncate", options.truncate,
                   "remove all rows of the tables first; asks on a terminal");
  command.add_flag("--yes", options.yes, "remove them without asking");
  command.add_flag("--no-analyze", options.no_analyze, "do not run ANALYZE on the tables");
  command.add_flag("--quiet", options.quiet, "print no line about the result");
}

void add_sets_options(CLI::App& command, SetsOptions& options) {
  command.add_option("NAME", options.name, "a set, or a column of one as a layout names it");
  command.add_option("--language", options.language, "the language of the values (default: en)");
  CLI::Option* rows = command.add_option("-n,--rows", options.rows, "number of rows (default: 10)")
                          ->check(number_from(0));
  command.add_flag("--tsv", options.as_file, "print the whole table, with tabs between columns")
      ->excludes(rows);
}

// How many letters to change, add and drop until one word is the other.
std::size_t distance_of(std::string_view left, std::string_view right) {
  std::vector<std::size_t> row(right.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (const char letter : left) {
    std::size_t diagonal = row[0]++;
    for (std::size_t i = 0; i < right.size(); ++i) {
      const std::size_t replaced = diagonal + (letter == right[i] ? 0 : 1);
      diagonal = row[i + 1];
      row[i + 1] = std::min({replaced, row[i] + 1, diagonal + 1});
    }
  }
  return row.back();
}

// Names those commands first that are written like the word.
std::string unknown_command(const std::string& word, std::vector<std::string> names) {
  std::stable_sort(names.begin(), names.end(), [&](const auto& left, const auto& right) {
    return distance_of(word, left) < distance_of(word, right);
  });
  return "no command \"" + platform::printable(word) + "\", expected one of " +
         CLI::detail::join(names, ", ");
}

// Whether an argument is a connection string, or was meant to be one: it may have a password in it.
bool is_like_connection(std::string_view argument) {
  const std::string text = CLI::detail::to_lower(std::string(argument));
  const std::size_t scheme = text.find("://");
  if (scheme != std::string::npos && text.find('@', scheme) != std::string::npos) return true;
  if (text.starts_with("postgresql:") || text.starts_with("postgres:")) return true;
  const std::size_t password = text.find("password");
  return password != std::string::npos && text.find('=', password) != std::string::npos;
}

// The connection strings among the arguments, without the options that they are values of.
std::vector<std::string> connections_among(int argc, const char* const* argv) {
  std::vector<std::string> found;
  for (int i = 1; i < argc; ++i) {
    std::string_view argument = argv[i];
    if (argument.starts_with("--")) {
      argument.remove_prefix(std::min(argument.find('='), argument.size() - 1) + 1);
    } else if (argument.starts_with("-")) {
      argument.remove_prefix(std::min<std::size_t>(argument.size(), 2));
    }
    if (is_like_connection(argument)) found.emplace_back(argument);
  }
  return found;
}

std::string without_connections(std::string text, const std::vector<std::string>& connections) {
  constexpr std::string_view stand_in = "DATABASE";
  for (const std::string& connection : connections) {
    for (std::size_t at = text.find(connection); at != std::string::npos;
         at = text.find(connection, at + stand_in.size())) {
      text.replace(at, connection.size(), stand_in);
    }
  }
  return text;
}

// Says which variables have values that nobody would notice to be ignored. Answers whether there
// was one.
bool print_wrong_variables(std::ostream& messages) {
  const auto is_one_of = [](std::string_view left, std::string_view right) {
    return [=](std::string_view value) { return value == left || value == right; };
  };
  const std::tuple<const char*, std::function<bool(std::string_view)>, const char*> variables[] = {
      {"KORVEX_UI", is_one_of("console", "desktop"), "console or desktop"},
      {"KORVEX_ANSWER", is_one_of("yes", "no"), "yes or no"},
      {"KORVEX_HOST_KEY", platform::is_plain_name, "the plain name of a folder"},
  };
  bool has_wrong = false;
  for (const auto& [name, is_right, expected] : variables) {
    const char* value = std::getenv(name);
    if (value == nullptr || *value == '\0' || is_right(value)) continue;
    messages << name << " is \"" << platform::printable(value) << "\", expected " << expected
             << std::endl;
    has_wrong = true;
  }
  return has_wrong;
}

ExitStatus run_show(const std::string& path, std::ostream& out, std::ostream& messages) {
  const std::string failure = show_file(path, out);
  out.flush();
  if (failure.empty()) return ExitStatus::done;
  messages << platform::printable(path) << ": " << failure << std::endl;
  return ExitStatus::failed;
}

}  // namespace

ExitStatus run_program(int argc, const char* const* argv, const ModuleFunctions& functions,
                       std::ostream& out, std::ostream& messages) {
  CLI::App app("Test data for record files and database tables", "korvex");
  app.set_version_flag("--version", version_text);
  app.require_subcommand(1);
  CommandList commands(app);
  GenerateOptions options;
  commands.add("generate", "Generate the data file of a layout",
               [&](CLI::App& command) { add_generate_options(command, options); });
  CountOptions count_options;
  const Command* count =
      commands.add("count", "Say how many records the settings give and how large the file will be",
                   [&](CLI::App& command) { add_count_options(command, count_options); });
  EditOptions edit_options;
  const Command* edit = commands.add(
      "edit", "Edit the settings in a window and generate the data file", [&](CLI::App& command) {
        add_layout(command, edit_options.layout);
        add_records(command, edit_options.records);
      });
  const Command* format =
      commands.add("format", "Edit the settings in a window",
                   [&](CLI::App& command) { add_layout(command, edit_options.layout); });
  const Command* update =
      commands.add("update", "Edit the settings of one item in a window", [&](CLI::App& command) {
        add_layout(command, edit_options.layout);
        command.add_option("--item", edit_options.item, "name of the item (default: the first)");
      });
  ImportOptions import_options;
  const Command* import =
      commands.add("import", "Write layouts for the tables of a database",
                   [&](CLI::App& command) { add_import_options(command, import_options); });
  LoadOptions load_options;
  const Command* load =
      commands.add("load", "Generate the records of layouts into tables of a database",
                   [&](CLI::App& command) { add_load_options(command, load_options); });
  std::string shown_file;
  const Command* show = commands.add(
      "show", "Show a control file, Format Information file or log file in readable form",
      [&](CLI::App& command) { command.add_option("FILE", shown_file, "the file")->required(); });
  SetsOptions sets_options;
  const Command* sets =
      commands.add("sets", "List the built-in sets of values, or show one",
                   [&](CLI::App& command) { add_sets_options(command, sets_options); });
  LayoutCommands layout_commands(commands);
  PartCommands part_commands(commands);

  std::vector<std::string> connections = connections_among(argc, argv);
  const bool names_command = argc > 1 && argv[1][0] != '-';
  if (!names_command) {
    commands.make_all();
  } else if (!commands.make(argv[1])) {
    messages << unknown_command(without_connections(argv[1], connections), commands.names())
             << std::endl;
    return ExitStatus::wrong_usage;
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& stop) {
    std::ostringstream words;
    const int status = app.exit(stop, out, words);
    messages << platform::printable_lines(without_connections(words.str(), connections))
             << std::flush;
    return status == 0 ? ExitStatus::done : ExitStatus::wrong_usage;
  }
  for (const std::string& database : {import_options.database, load_options.database}) {
    const auto place = std::find(connections.begin(), connections.end(), database);
    if (place != connections.end()) connections.erase(place);
  }
  if (!connections.empty()) {
    // What takes it for the name of a file or table would print it.
    messages << "a database where none is expected: korvex import DATABASE TABLE, korvex "
                "load LAYOUT DATABASE [TABLE]"
             << std::endl;
    return ExitStatus::wrong_usage;
  }
  if (print_wrong_variables(messages)) return ExitStatus::wrong_usage;
  if (const auto status = layout_commands.run(out, messages)) return *status;
  if (const auto status = part_commands.run(out, messages)) return *status;
  if (show->parsed()) return run_show(shown_file, out, messages);
  if (sets->parsed()) return run_sets(sets_options, out, messages);
  if (import->parsed()) return run_import(import_options, out, messages);
  if (load->parsed()) {
    const bool has_terminal = ::isatty(STDIN_FILENO) == 1;
    return run_load(load_options, has_terminal ? &std::cin : nullptr, out, messages);
  }
  if (count->parsed()) {
    return run_count(count_options, functions.check_repeat_count, out, messages);
  }
  if (edit->parsed()) return run_edit(edit_options, functions.create_file, out, messages);
  if (format->parsed()) return run_edit(edit_options, functions.create_format, out, messages);
  if (update->parsed()) return run_update(edit_options, functions.replace_data, out, messages);
  return run_generate(options, functions.create_data, out, messages);
}

}  // namespace korvex::host
