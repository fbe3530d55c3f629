#include "host/commands/command_list.h"

#include <algorithm>

namespace korvex::host {

void Command::make(CLI::App& app) {
  made_ = app.add_subcommand(name_, description_);
  made_->preparse_callback([this](std::size_t) { add_options_(*made_); });
}

bool CommandList::make(std::string_view name) {
  const auto command = std::find_if(commands_.begin(), commands_.end(),
                                    [&](const Command& each) { return each.name() == name; });
  if (command == commands_.end()) return false;
  command->make(app_);
  return true;
}

void CommandList::make_all() {
  for (Command& command : commands_) command.make(app_);
}

std::vector<std::string> CommandList::names() const {
  std::vector<std::string> names;
  for (const Command& command : commands_) names.emplace_back(command.name());
  return names;
}

}  // namespace korvex::host
