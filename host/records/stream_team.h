#pragma once

#include <cstddef>
#include <functional>
#include <memory>

#include "host/records/record_stream.h"

namespace korvex::host {

// Makes the stream of a layout.
using StreamMaker = std::function<std::unique_ptr<RecordStream>(PreparedLayout&)>;

// The same records and bytes as the stream of `prepared`, made by up to so many threads once it is
// seen to be worth it. Each has a stream of its own and a copy of the layout, which reads the lists
// of the layout's own sources again; those of the engine are shared. The layout must outlive it.
std::unique_ptr<RecordStream> stream_by_threads(PreparedLayout& prepared, const StreamMaker& make,
                                                std::size_t threads);

}  // namespace korvex::host
