#include "platform/runtime_class.h"

#include <map>

namespace korvex::platform {

namespace {

std::map<std::string_view, ObjectFactory>& factories() {
  static std::map<std::string_view, ObjectFactory> known;
  return known;
}

}  // namespace

std::unique_ptr<Object> create_object(std::string_view class_name) {
  const auto found = factories().find(class_name);
  return found == factories().end() ? nullptr : found->second();
}

void register_class(std::string_view class_name, ObjectFactory factory) {
  factories()[class_name] = factory;
}

}  // namespace korvex::platform
