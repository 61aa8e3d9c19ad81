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

constexpr const char* Explanation =
    "Below is an explanation of the X, Y, and Z values for creating the destination table address.";

constexpr Text Head(int top, const char* text) { return {{360, top, 12120, 315}, TextRole::Heading, text}; }
constexpr Text Line(int top, const char* text) { return {{360, top, 12120, 315}, TextRole::Body, text}; }
constexpr Text Name(int top, const char* text) { return {{360, top, 6360, 315}, TextRole::Body, text}; }
constexpr Text Means(int top, const char* text) { return {{6840, top, 5640, 315}, TextRole::Muted, text}; }

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

    Head(2760, "SLC/PLC - NXYY:Z Decoding"),
    Line(3075, Explanation),
    Name(3420, "X  -  Register/Coil Reference "),                          Means(3420, "0 = 0x  ,  1 = 1x  ,  3 = 3x  ,  4 = 4x"),
    Name(3735, "Y  -  Slave Address"),                                     Means(3735, "1 to 99"),
    Name(4050, "Z  -  Register/Coil Starting Address"),                    Means(4050, "1 to 9999"),

    Head(4545, "SLC/PLC - NXYZ:Z Decoding"),
    Line(4860, Explanation),
    Name(5205, "X  -  Register/Coil Reference "),                          Means(5205, "0 = 0x   ,   1 = 1x   ,   3 = 3x   ,   4 = 4x"),
    Name(5520, "Y  -  Slave Address"),                                     Means(5520, "1 to 9"),
    Name(5835, "Z  -  Register/Coil Starting Address"),
    Name(6150, "Z value before the colon ' :  = Thousands Digit"),         Means(6150, "0 to 9"),
    Name(6465, "Z value after the colon ' :  = Ones to Hundreds Digits"),  Means(6465, "0 to 999"),

    Head(6960, "Micrologix - NYXZ:Z Decoding"),
    Line(7275, Explanation),
    Name(7620, "X  -  Register/Coil Reference"),                           Means(7620, "0 = 0x   ,   1 = 1x   ,   3 = 3x   ,   4 = 4x"),
    Name(7935, "Y  -  Slave Address"),                                     Means(7935, "0 = Slave 1   ,   1 = Slave 2   ,   2 = Slave 3"),
    Name(8250, "Z  -  Register/Coil Starting Address"),
    Name(8565, "Z value before the colon ' :  = Thousands Digit"),         Means(8565, "0 to 9"),
    Name(8880, "Z value after the colon ' :  = Ones to Hundreds Digits"),  Means(8880, "0 to 999"),
};
// clang-format on

}  // namespace

DDTAExplanationFrm::DDTAExplanationFrm(App& app)
    : Form(app.forms, FormName, "Destination Data Table Address Decoding Explanation", 12840, 10260), app_(app) {
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
