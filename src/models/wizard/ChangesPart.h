// The part of a wizard's apply page that shows what has changed since the values came.
#pragma once

#include <memory>

#include "listing/ListRows.h"
#include "models/wizard/ValueOrigin.h"

namespace vk32 {

class ChangesPart {
 public:
  explicit ChangesPart(Frame& applyFrame) : page_(applyFrame) {}

  void Show(const ValueOrigin& origin);

 private:
  static constexpr int Lines = 8;

  static int LineTop(int line) { return 4470 + ListRowHeight * (line - 1); }
  /// Element 0 is the head of the column.
  ControlArray<Label> Column(const char* name, int left, int width, const char* head,
                             TextRole role = TextRole::TableText) {
    return {name, 0, Lines, [=, this](ControlName element, int line) {
              return line == 0
                         ? std::make_unique<Label>(page_, element, Place{left, 4140, width, 240}, head,
                                                   TextRole::TableHead)
                         : std::make_unique<Label>(page_, element, Place{left, LineTop(line), width, 240}, "", role);
            }};
  }

  Frame& page_;

 public:
  // clang-format off
  Label               ChangesLbl        {page_, "ChangesLbl",        { 360, 3720, 1080,  315}, "Changes", TextRole::Heading};
  Label               ChangesSinceLbl   {page_, "ChangesSinceLbl",   {1440, 3720, 7200,  315}, "", TextRole::Muted};
  Frame               ChangesTableFrame {page_, "ChangesTableFrame", { 360, 4440, 7980, 2400}, Fill::List};
  ControlArray<Frame> ChangeLineFrame   {"ChangeLineFrame", 1, Lines, [this](ControlName element, int line) {
    return std::make_unique<Frame>(page_, element, Place{360, LineTop(line) + 255, 7980, 15}, Fill::Hairline);
  }};
  ControlArray<Label> ChangeFieldLbl    = Column("ChangeFieldLbl",   480, 4200, "Page and field", TextRole::TablePath);
  ControlArray<Label> ChangeBeforeLbl   = Column("ChangeBeforeLbl", 4800, 1680, "Before");
  ControlArray<Label> ChangeAfterLbl    = Column("ChangeAfterLbl",  6600, 1680, "After");
  VScrollBar          ChangesVScroll    {page_, "ChangesVScroll",    {8340, 4440,  300, 2400}, [this] { rows.Draw(); }};
  // clang-format on

 private:
  ListRows rows{{&ChangeFieldLbl, &ChangeBeforeLbl, &ChangeAfterLbl}, ChangeLineFrame, ChangesVScroll};
};

}  // namespace vk32
