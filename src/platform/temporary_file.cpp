#include "platform/temporary_file.h"

#include <array>
#include <cstdio>
#include <utility>

#include "platform/path.h"

namespace korvex::platform {

namespace {

// How many taken names in a row are tried before the folder counts as unusable.
constexpr int max_taken_names = 3600;

constexpr std::array<const char*, 12> month_names = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                     "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

}  // namespace

std::string temporary_name(std::time_t moment) {
  std::tm local = {};
  ::localtime_r(&moment, &local);
  char name[64];
  std::snprintf(name, sizeof name, "DG%04d%s%02d%02d%02d%02d.TMP", local.tm_year + 1900,
                month_names[static_cast<std::size_t>(local.tm_mon)], local.tm_mday, local.tm_hour,
                local.tm_min, local.tm_sec);
  return name;
}

FileCause TemporaryFile::create(const std::string& folder, std::time_t moment) {
  remove();
  for (int attempt = 0; attempt < max_taken_names; ++attempt) {
    std::string path = join_path(folder, temporary_name(moment + attempt));
    const FileCause cause = file_.create_new(path);
    if (cause == FileCause::none) path_ = std::move(path);
    if (cause != FileCause::already_exists) return cause;
  }
  return FileCause::already_exists;
}

FileCause TemporaryFile::create_as(const std::string& path) {
  remove();
  std::string own = path;
  remove_file(own);
  const FileCause cause = file_.create_new(own);
  if (cause == FileCause::none) path_ = std::move(own);
  return cause;
}

void TemporaryFile::remove() {
  if (!path_.empty()) remove_file(path_);
  path_.clear();
  file_.discard();
}

}  // namespace korvex::platform
