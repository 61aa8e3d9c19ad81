// Control arrays: one name, elements with the system's own index range.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "forms/Control.h"
#include "platform/Fault.h"

namespace vk32 {

template <class T>
class ControlArray {
 public:
  /// `make(element name, index)` gives a std::unique_ptr<T> for each index from `first` to `last`.
  template <class Make>
  ControlArray(const char* name, int first, int last, Make make) : first_(first) {
    for (int index = first; index <= last; ++index) elements_.push_back(make(ControlName(name, index), index));
  }

  int First() const { return first_; }
  int Last() const { return first_ + static_cast<int>(elements_.size()) - 1; }
  T& operator[](int index) const {
    if (index < First() || index > Last()) throw RuntimeFault(RuntimeFault::SubscriptOutOfRange);
    return *elements_[static_cast<std::size_t>(index - first_)];
  }
  auto begin() const { return elements_.begin(); }
  auto end() const { return elements_.end(); }

 private:
  int first_;
  std::vector<std::unique_ptr<T>> elements_;
};

}  // namespace vk32
