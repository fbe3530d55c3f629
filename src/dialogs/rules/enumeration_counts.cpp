#include "dialogs/rules/enumeration_counts.h"

#include <sys/stat.h>

#include "run/repeat_count.h"
#include "values/record_text.h"

namespace korvex {

Result<std::int32_t> EnumerationCounts::count(ClColMain& main, const FmtColRec& settings) {
  std::string path(field_text(settings.enumeration_path));
  struct stat status = {};
  if (::stat(path.c_str(), &status) != 0) return count_enumeration(main, settings);
  const Version version{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
                        status.st_mtim.tv_nsec};
  Key key{std::move(path), settings.attribute, settings.signed_flag,
          settings.length, settings.digits,    settings.decimals};
  const auto found = known_.find(key);
  if (found != known_.end() && found->second.version == version) return found->second.count;
  const Result<std::int32_t> counted = count_enumeration(main, settings);
  // What made a file unusable, such as a lock, may be gone without a trace in its version.
  if (counted) known_.insert_or_assign(std::move(key), Known{version, *counted});
  return counted;
}

}  // namespace korvex
