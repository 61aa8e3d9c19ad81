// Properties: assigned and read as plain members, known by name, told to the front end when they change.
#pragma once

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

namespace vk32 {

class PropertyBase;

/// What has properties: a control or a form.
class Element {
 public:
  Element() = default;
  Element(const Element&) = delete;
  Element& operator=(const Element&) = delete;
  virtual ~Element() = default;

  /// The property of that name, or nullptr.
  const PropertyBase* FindProperty(std::string_view name) const;

 private:
  friend class PropertyBase;
  virtual void PropertyChanged(const PropertyBase& property) = 0;

  PropertyBase* first_ = nullptr;
};

class PropertyBase {
 public:
  PropertyBase(Element& owner, const char* name) : owner_(owner), name_(name), next_(owner.first_) {
    owner.first_ = this;
  }
  PropertyBase(const PropertyBase&) = delete;
  PropertyBase& operator=(const PropertyBase&) = delete;
  virtual ~PropertyBase() = default;

  std::string_view Name() const { return name_; }
  /// The value as text: "True" and "False", decimal numbers, texts as they stand.
  virtual std::string AsText() const = 0;

 protected:
  void Changed() { owner_.PropertyChanged(*this); }

  Element& owner_;

 private:
  friend class Element;
  const char* name_;
  PropertyBase* next_;
};

inline const PropertyBase* Element::FindProperty(std::string_view name) const {
  const PropertyBase* property = first_;
  while (property && property->Name() != name) property = property->next_;
  return property;
}

namespace detail {
inline std::string PropertyText(const std::string& value) { return value; }
inline std::string PropertyText(bool value) { return value ? "True" : "False"; }
inline std::string PropertyText(int value) { return std::to_string(value); }
}  // namespace detail

/// A property that takes every value of its type.
template <class T>
class Property : public PropertyBase {
 public:
  Property(Element& owner, const char* name, T value) : PropertyBase(owner, name), value_(std::move(value)) {}

  operator const T&() const { return value_; }
  const T& Value() const { return value_; }
  Property& operator=(T value) {
    Store(std::move(value));
    return *this;
  }
  Property& operator=(const Property& other) { return *this = other.value_; }
  std::string AsText() const override {
    using detail::PropertyText;
    return PropertyText(value_);
  }

 protected:
  void Store(T value) {
    if (value == value_) return;
    value_ = std::move(value);
    Changed();
  }

  T value_;
};

/// A property whose assignment is an act: `Assign` of the owner decides what becomes of the value, and keeps it by Set.
template <class T, class Owner, void (Owner::*Assign)(const T&)>
class ActiveProperty : public Property<T> {
 public:
  using Property<T>::Property;

  ActiveProperty& operator=(const T& value) {
    (static_cast<Owner&>(this->owner_).*Assign)(value);
    return *this;
  }
  ActiveProperty& operator=(const ActiveProperty& other) { return *this = T(other.Value()); }

 private:
  friend Owner;
  void Set(T value) { this->Store(std::move(value)); }
  /// Changes the value in place: costs what the change costs, not what the value does.
  template <class Edit>
  void Change(Edit edit) {
    edit(this->value_);
    this->Changed();
  }
};

}  // namespace vk32
