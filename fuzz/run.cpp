#include "run.h"

#include <algorithm>

#include "korvex/control_file.h"
#include "lists/enumeration_check.h"
#include "run/generate_data_file.h"
#include "values/record_text.h"

namespace korvex::fuzz {

namespace {

bool is_temporary(const std::string& path) {
  return path.ends_with(".TMP") || path.ends_with(".w");
}

}  // namespace

void put_control_file(World& world, const RunRequest& request, std::size_t count,
                      std::string_view items) {
  korvex_control_header header = {};
  header.records = request.records;
  header.layout_kind = number_of(request.layout_kind);
  header.null_default = 1;
  header.level = number_of(request.level);
  header.item_count = static_cast<std::int32_t>(count);
  store_field(header.data_path, data_path);
  store_field(header.settings_path, settings_path);
  store_field(header.work_folder, work_folder);
  const std::string_view bytes(reinterpret_cast<const char*>(&header), sizeof header);
  world.files.put(control_path, std::string(bytes).append(items));
}

ErrorCode generate(World& world, const RunRequest& request) {
  put_control_file(world, request, request.items.size(), bytes_of(request.items));
  const Result<ByteCount> measured = [&] {
    ClColMain main;
    main.control_path = control_path;
    Run run;
    const Result<bool> loaded =
        run.load(main, [&](const FmtColRec& settings, ClEnumDataList& list) {
          ListLine bad_line = ListLine::none;
          const std::string path(field_text(settings.enumeration_path));
          return check_enumeration(main, path, settings, bad_line, &list).code();
        });
    if (!loaded || !*loaded) return Result<ByteCount>(error::no_data_file);
    return run.measure(RecordCount(static_cast<std::uint64_t>(request.records)));
  }();
  world.interface.polls = 0;
  world.interface.cancel_at_poll = request.cancel_at_poll;
  ErrorCode result = error::none;
  {
    ClGenerateDataFile generator;
    generator.main.control_path = control_path;
    generator.output_option = request.output_option;
    result = generator.run();
  }
  world.interface.cancel_at_poll = 0;
  require(world.files.exists(data_path) == (result == error::none),
          "a data file stands for success");
  if (result == error::none) {
    require(measured.code() == error::none, "what can be generated can be measured");
    require(world.files.get(data_path).size() == *measured, "the file is as large as predicted");
  }
  const auto paths = world.files.paths();
  require(std::none_of(paths.begin(), paths.end(), is_temporary), "no temporary stays");
  return result;
}

}  // namespace korvex::fuzz
