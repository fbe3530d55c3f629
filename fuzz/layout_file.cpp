// A layout file: read, and if it is good, its settings written and its records generated.
#include <cstddef>
#include <sstream>
#include <string>

#include "host/engine/layout_messages.h"
#include "host/engine/settings_editor.h"
#include "host/layout/layout_reader.h"
#include "run.h"
#include "values/record_text.h"

namespace korvex::fuzz {
namespace {

constexpr std::int32_t records = 30;

void use(host::Layout layout) {
  World world;
  std::ostringstream messages;
  print_warnings(layout, messages);
  layout.settings = settings_path;
  layout.data = data_path;
  layout.work = work_folder;
  const host::SettingsResult settings = write_settings_of(layout);
  if (print_failures(settings, layout, messages)) return;
  print_left_out(settings.left_out, layout, messages);
  RunRequest request;
  request.records = records;
  request.layout_kind = layout.kind;
  request.level = layout.level;
  request.items.clear();
  for (const host::LayoutItem& item : layout.items) request.items.push_back(item.number);
  generate(world, request);
}

}  // namespace
}  // namespace korvex::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace korvex;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  host::LayoutReading reading = host::parse_layout(text, "layout.toml", std::nullopt);
  std::ostringstream messages;
  if (!print_layout_errors(reading, messages)) fuzz::use(std::move(reading.layout));
  return 0;
}
