#include "host/sources/needs.h"

#include <algorithm>
#include <cstdint>

namespace korvex::sources {
namespace {

enum class State : std::uint8_t { untouched, begun, made };

// A thing whose needs are being made, up to the next of them.
struct Begun {
  std::size_t thing;
  std::size_t next_need;
};

std::vector<std::size_t> circle_from(const std::vector<Begun>& path, std::size_t first) {
  auto begun = std::find_if(path.begin(), path.end(),
                            [&](const Begun& step) { return step.thing == first; });
  std::vector<std::size_t> circle;
  for (; begun != path.end(); ++begun) circle.push_back(begun->thing);
  return circle;
}

}  // namespace

MakingOrder making_order(std::span<const std::vector<std::size_t>> needs) {
  MakingOrder result;
  std::vector<State> states(needs.size(), State::untouched);
  for (std::size_t first = 0; first < needs.size(); ++first) {
    if (states[first] != State::untouched) continue;
    std::vector<Begun> path = {{first, 0}};
    states[first] = State::begun;
    while (!path.empty()) {
      Begun& last = path.back();
      if (last.next_need == needs[last.thing].size()) {
        states[last.thing] = State::made;
        result.order.push_back(last.thing);
        path.pop_back();
        continue;
      }
      const std::size_t need = needs[last.thing][last.next_need++];
      if (states[need] == State::begun) return {{}, circle_from(path, need)};
      if (states[need] == State::made) continue;
      states[need] = State::begun;
      path.push_back({need, 0});
    }
  }
  return result;
}

}  // namespace korvex::sources
