// Where the values of a wizard come from, and what has changed since.
#pragma once

#include <string>
#include <vector>

#include "core/Parameters.h"
#include "forms/Form.h"
#include "listing/Listing.h"

namespace vk32 {

struct Origin {
  std::string source;  // "Read from COM3, 21:40"
  std::string since;   // "since it was read from COM3 at 21:40": follows the word "Changes"
  Listing values;      // what the pages showed then, hidden fields included
};

/// What a wizard held that was closed with changed values.
struct KeptValues {
  Parameters parameters;
  Listing values;  // of all pages; their controls are gone
  Origin origin;
  std::string time;  // of the close
};

/// The lines beside the foot of a wizard.
class ValueOrigin {
 public:
  explicit ValueOrigin(Form& form) : form_(form) {}

  void Set(Origin origin);
  /// Says that some of the values come from elsewhere by now; what has changed counts from the origin before.
  void SetPart(const std::string& source) { SourceLbl.Caption = source; }
  /// Counts what `now` shows otherwise.
  void Count(const Listing& now);

  const Origin& Get() const { return origin_; }
  bool IsKnown() const { return !origin_.source.empty(); }
  const std::vector<Difference>& Changed() const { return changes_; }

 private:
  Form& form_;
  Origin origin_;
  std::vector<Difference> changes_;

 public:
  // clang-format off
  Frame SourceLineFrame {form_, "SourceLineFrame", {240, 7620, 3360,  15}, Fill::Hairline};
  Label SourceLbl       {form_, "SourceLbl",       {240, 7770, 3360, 240}, "", TextRole::Small};
  Label ChangedLbl      {form_, "ChangedLbl",      {240, 8010, 3360, 240}, "", TextRole::Small};
  // clang-format on
};

}  // namespace vk32
