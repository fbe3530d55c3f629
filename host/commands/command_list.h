#pragma once

#include <CLI/CLI.hpp>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace korvex::host {

// A command of the program.
class Command {
 public:
  using AddOptions = std::function<void(CLI::App&)>;

  Command(const char* name, const char* description, AddOptions add_options)
      : name_(name), description_(description), add_options_(std::move(add_options)) {}

  std::string_view name() const { return name_; }

  // Whether the command line has it.
  bool parsed() const { return made_ != nullptr && made_->parsed(); }

  // What was parsed.
  const CLI::App& app() const { return *made_; }

  void make(CLI::App& app);

 private:
  const char* name_;
  const char* description_;
  AddOptions add_options_;
  CLI::App* made_ = nullptr;
};

// All commands. Where the command line names one, it alone is made, and its options when it is
// parsed: all commands together cost more than many a run.
class CommandList {
 public:
  explicit CommandList(CLI::App& app) : app_(app) {}

  // The command stays where it is, and tied to what its options refer to.
  const Command* add(const char* name, const char* description, Command::AddOptions add_options) {
    return &commands_.emplace_back(name, description, std::move(add_options));
  }

  // Makes one; false when there is none of that name.
  bool make(std::string_view name);

  // For a command line that asks what there is.
  void make_all();

  std::vector<std::string> names() const;

 private:
  CLI::App& app_;
  std::deque<Command> commands_;
};

}  // namespace korvex::host
