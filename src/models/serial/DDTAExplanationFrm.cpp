// The page that explains the three decodings.
#include "models/serial/DDTAExplanationFrm.h"

#include "shell/MainMenu.h"
#include "shell/Subs.h"

namespace vk32 {
namespace {

constexpr Color Blue = 0xFF0000;

struct Text {
  Place place;
  TextRole role;
  const char* text;
};

constexpr int Column1 = 360, Column2 = 4500, Column3 = 8640, ColumnWidth = 3780;
constexpr const char* Explanation =
    "Below is an explanation of the X, Y, and Z values for creating the destination table address.";

constexpr Text Line(int left, int top, const char* text, TextRole role = TextRole::Body) {
  return {{left, top, ColumnWidth, 315}, role, text};
}
constexpr Text Lines(int left, int top, int height, const char* text) {
  return {{left, top, ColumnWidth, height}, TextRole::Body, text};
}

// clang-format off
constexpr Text ElementTable[] = {
    {{360, 780, 12120, 810}, TextRole::Body,
     "The Destination Data Table Address decoding is used when the RB3000 is configured as a Modbus Master to determine the slave address "
     "and registers/coils that you want to read or write to.  Below is an explanation of the different types of address decoding that can "
     "be used with the RB3000.  "},
    {{360, 1680, 12120, 540}, TextRole::Body,
     "To assist with setting the Destination Data Table Address, address mapping software has been developed and can be downloaded by "
     "clicking on the link below."},
    {{360, 2280, 6000, 315}, TextRole::BodyLink, "Click Here to download the Address Mapping software."},

    Line (Column1, 2880, "SLC/PLC - NXYY:Z Decoding", TextRole::Heading),
    Lines(Column1, 3240, 810, Explanation),
    Line (Column1, 4140, "X  -  Register/Coil Reference "), Line(Column1, 4455, "0 = 0x  ,  1 = 1x  ,  3 = 3x  ,  4 = 4x", TextRole::Muted),
    Line (Column1, 4860, "Y  -  Slave Address"),            Line(Column1, 5175, "1 to 99", TextRole::Muted),
    Line (Column1, 5580, "Z  -  Register/Coil Starting Address"), Line(Column1, 5895, "1 to 9999", TextRole::Muted),

    Line (Column2, 2880, "SLC/PLC - NXYZ:Z Decoding", TextRole::Heading),
    Lines(Column2, 3240, 810, Explanation),
    Line (Column2, 4140, "X  -  Register/Coil Reference "), Line(Column2, 4455, "0 = 0x   ,   1 = 1x   ,   3 = 3x   ,   4 = 4x", TextRole::Muted),
    Line (Column2, 4860, "Y  -  Slave Address"),            Line(Column2, 5175, "1 to 9", TextRole::Muted),
    Line (Column2, 5580, "Z  -  Register/Coil Starting Address"),
    Line (Column2, 5895, "Z value before the colon ' :  = Thousands Digit"),        Line(Column2, 6210, "0 to 9", TextRole::Muted),
    Lines(Column2, 6525, 315, "Z value after the colon ' :  = Ones to Hundreds Digits"), Line(Column2, 6840, "0 to 999", TextRole::Muted),

    Line (Column3, 2880, "Micrologix - NYXZ:Z Decoding", TextRole::Heading),
    Lines(Column3, 3240, 810, Explanation),
    Line (Column3, 4140, "X  -  Register/Coil Reference"),  Line(Column3, 4455, "0 = 0x   ,   1 = 1x   ,   3 = 3x   ,   4 = 4x", TextRole::Muted),
    Line (Column3, 4860, "Y  -  Slave Address"),            Line(Column3, 5175, "0 = Slave 1   ,   1 = Slave 2   ,   2 = Slave 3", TextRole::Muted),
    Line (Column3, 5580, "Z  -  Register/Coil Starting Address"),
    Line (Column3, 5895, "Z value before the colon ' :  = Thousands Digit"),        Line(Column3, 6210, "0 to 9", TextRole::Muted),
    Lines(Column3, 6525, 315, "Z value after the colon ' :  = Ones to Hundreds Digits"), Line(Column3, 6840, "0 to 999", TextRole::Muted),
};
// clang-format on

}  // namespace

DDTAExplanationFrm::DDTAExplanationFrm(App& app)
    : Form(app.forms, FormName, "Destination Data Table Address Decoding Explanation", 12840, 8160), app_(app) {
  static_assert(std::size(ElementTable) == Elements);
}

std::unique_ptr<Label> DDTAExplanationFrm::MakeElement(DDTAExplanationFrm& form, ControlName name, int index) {
  const Text& element = ElementTable[index];
  return std::make_unique<Label>(form, name, element.place, element.text, element.role,
                                 &DDTAExplanationFrm::DDTAExpLbl_Click,
                                 MouseHandlers{{}, {}, &DDTAExplanationFrm::DDTAExpLbl_MouseMove});
}

void DDTAExplanationFrm::DDTAExpLbl_Click(int) { OpenWebSite(app_, WebSite); }

void DDTAExplanationFrm::DDTAExpLbl_MouseMove(int index) {
  DDTAExpLbl[LinkElement].ForeColor = index == LinkElement ? Blue : SystemButtonText;
}

void DDTAExplanationFrm::Form_MouseMove() { DDTAExpLbl[LinkElement].ForeColor = SystemButtonText; }

}  // namespace vk32
