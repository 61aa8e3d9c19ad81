// Where the values of a wizard come from, and what has changed since.
#include "models/wizard/ValueOrigin.h"

#include <utility>

namespace vk32 {

void ValueOrigin::Set(Origin origin) {
  origin_ = std::move(origin);
  SourceLbl.Caption = origin_.source;
  Count(origin_.values);
}

void ValueOrigin::Count(const Listing& now) {
  changes_ = Changes(origin_.values, now);
  const std::size_t count = changes_.size();
  ChangedLbl.Caption = count == 0   ? "No changes"
                       : count == 1 ? "1 value changed"
                                    : std::to_string(count) + " values changed";
  ChangedLbl.ForeColor = count == 0 ? SystemButtonText : TextColor;
}

}  // namespace vk32
