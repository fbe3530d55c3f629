#include "host/parts/file_comparison.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace korvex::host {

namespace {

using platform::FileCause;

std::string place_text(const RecordPlace& place) {
  std::string text = "record " + std::to_string(place.record.number() + 1);
  if (!place.item.empty()) text += ", item " + place.item;
  return text;
}

std::string system_text() { return std::strerror(platform::last_file_error()); }

}  // namespace

FileComparison::FileComparison(const std::string& path) {
  if (file_.open_for_reading(path, platform::Sharing::unlocked) != FileCause::none) {
    failure_ = system_text();
  } else if (!file_.is_regular()) {
    failure_ = "is no file, expected one";
  } else if (file_.size(size_) != FileCause::none) {
    failure_ = system_text();
  }
}

std::string FileComparison::compare(RecordStream& stream, const Stretch& stretch,
                                    std::uint64_t offset) {
  if (!failure_.empty()) return failure_;
  if (file_.seek(offset) != FileCause::none) return system_text();
  end_ = offset;
  stream.go_to(stretch.records, stretch.has_head);
  for (std::string_view bytes; !(bytes = stream.next()).empty();) {
    std::size_t count = 0;
    if (block_.size() < bytes.size()) block_.resize(bytes.size());
    if (file_.read(block_.data(), bytes.size(), count) != FileCause::none) return system_text();
    if (count == bytes.size() && std::memcmp(block_.data(), bytes.data(), count) == 0) {
      end_ += count;
      continue;
    }
    const auto end = block_.begin() + static_cast<std::ptrdiff_t>(count);
    const auto other = std::mismatch(block_.begin(), end, bytes.begin()).first;
    const auto same = static_cast<std::size_t>(other - block_.begin());
    end_ += same;
    const std::string place = place_text(stream.place_of(same));
    return same == count ? "ends in " + place + ", after " + std::to_string(end_) + " bytes"
                         : place + ", byte " + std::to_string(end_ + 1) + ": differs";
  }
  return stream.failure();
}

std::string FileComparison::check_end(std::uint64_t bytes) const {
  if (!failure_.empty() || size_ <= bytes) return {};
  return "continues after its last record, from byte " + std::to_string(bytes + 1) + " on";
}

std::uint64_t size_of(RecordStream& stream, const Stretch& stretch) {
  std::uint64_t size = 0;
  take_bytes(
      stream, stretch.records, stretch.has_head, [] { return true; },
      [&](std::string_view bytes) { size += bytes.size(); });
  return size;
}

}  // namespace korvex::host
