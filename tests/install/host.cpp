// A host in C++ that knows of KORVEX only that it is installed. It writes the long form of a
// control file, asks about the repeats of the settings in customers.fif, and tells one error from
// others.

#include <korvex/control_file.h>
#include <korvex/errors.h>
#include <korvex/korvex.h>
#include <korvex/version.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

#if KORVEX_VERSION < 200
#error "the version is not to be compared"
#endif

namespace {

korvex_control_item item(std::int32_t number, const char* name, korvex_attribute attribute,
                         std::int32_t length, std::int32_t digits) {
  korvex_control_item made = {};
  made.item_number = number;
  std::strcpy(made.name, name);
  made.attribute = attribute;
  made.length = length;
  made.digits = digits;
  return made;
}

std::int32_t check_repeats(const char* path) {
  korvex_control_item items[] = {item(1, "CUSTOMER_ID", korvex_attribute_decimal, 8, 8),
                                 item(2, "CODE", korvex_attribute_character, 10, 10),
                                 item(3, "SINCE", korvex_attribute_date, 8, 8),
                                 item(4, "BALANCE", korvex_attribute_decimal, 9, 7)};
  items[3].signed_flag = 1;
  items[3].decimals = 2;
  korvex_control_header header = {};
  header.records = 5;
  header.layout_kind = korvex_layout_record_file;
  header.level = 1;
  header.item_count = 4;
  std::strcpy(header.settings_path, "customers.fif");
  std::strcpy(header.work_folder, ".");
  std::FILE* const file = std::fopen(path, "wb");
  if (file == nullptr) return korvex_error_cannot_open;
  std::fwrite(&header, sizeof header, 1, file);
  std::fwrite(items, sizeof items, 1, file);
  std::fclose(file);
  return DGCheckRepeatCnt(path);
}

}  // namespace

int main() {
  const std::int32_t repeats = check_repeats("long.ctl");
  const std::int32_t missing = DGCreateData("missing.ctl", 0, nullptr, 0);
  std::printf("KORVEX %s: %d, %d\n", KORVEX_VERSION_STRING, static_cast<int>(repeats),
              static_cast<int>(missing));
  return repeats == 0 && missing == korvex_error_cannot_open ? 0 : 1;
}
