#pragma once

#include <memory>
#include <string_view>
#include <vector>

namespace korvex::platform {

// Base of the classes that can be made by name.
class Object {
 public:
  virtual ~Object() = default;
};

// An owning list: removing a member, or destroying the list, destroys the member.
template <typename T>
using ObjectList = std::vector<std::unique_ptr<T>>;

using ObjectFactory = std::unique_ptr<Object> (*)();

// Makes an object of the class registered under the name; null for an unknown name. The caller owns
// it.
std::unique_ptr<Object> create_object(std::string_view class_name);

void register_class(std::string_view class_name, ObjectFactory factory);

// One inline variable of this kind after a class makes it known by name, in every program that
// uses the class. The name must live as long as the program.
template <typename T>
struct RuntimeClass {
  explicit RuntimeClass(std::string_view name) {
    register_class(name, []() -> std::unique_ptr<Object> { return std::make_unique<T>(); });
  }
};

}  // namespace korvex::platform
