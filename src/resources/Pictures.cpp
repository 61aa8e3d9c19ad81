// The table of the numbered button pictures and the ways to look a row up.
#include "Pictures.h"

#include <algorithm>
#include <array>

namespace vk32 {
namespace {

constexpr std::array kTable = {
    PictureButtonRow{"AboutCmd", 101, 102, 95, 30, "ABOUT", PictureFace::Plain},
    PictureButtonRow{"CloseCmd", 103, 104, 95, 30, "CLOSE", PictureFace::Plain},
    PictureButtonRow{"ExitCmd", 105, 106, 95, 30, "EXIT", PictureFace::Plain},
    PictureButtonRow{"VKRTXCmd", 107, 108, 162, 35, "VK-RTX", PictureFace::Product},
    PictureButtonRow{"CancelCmd", 109, 110, 76, 26, "CANCEL", PictureFace::Plain},
    PictureButtonRow{"NextCmd", 111, 112, 70, 26, "NEXT", PictureFace::Primary},
    PictureButtonRow{"BackCmd", 113, 114, 70, 26, "BACK", PictureFace::Plain},
    PictureButtonRow{"UploadCmd", 115, 116, 137, 26, "UPLOAD CONFIGURATION", PictureFace::Plain},
    PictureButtonRow{"NextCmd", 117, 118, 70, 26, "FINISH", PictureFace::Primary},
    PictureButtonRow{"ConfigureCmd", 119, 120, 155, 30, "CONFIGURE", PictureFace::LeadsOn},
    PictureButtonRow{"OfflineCmd", 121, 122, 155, 30, "OFFLINE MANAGER", PictureFace::LeadsOn},
    PictureButtonRow{"ReturnCmd", 123, 124, 232, 30, "RETURN TO MAIN MENU", PictureFace::Plain},
    PictureButtonRow{"UpgradeCmd", 125, 126, 155, 30, "UPGRADE FIRMWARE", PictureFace::LeadsOn},
    PictureButtonRow{"DeviceInfoCmd", 127, 128, 155, 30, "DEVICE INFORMATION", PictureFace::LeadsOn},
    PictureButtonRow{"SendFirmwareCmd", 129, 130, 171, 30, "SEND FIRMWARE", PictureFace::Plain},
    PictureButtonRow{"RB3000Cmd", 131, 132, 162, 35, "RB3000", PictureFace::Product},
    PictureButtonRow{"VK5300Cmd", 133, 134, 162, 35, "VK5300", PictureFace::Product},
    PictureButtonRow{"RBCardCmd", 135, 136, 162, 35, "RBCard", PictureFace::Product},
    PictureButtonRow{"RB2000Cmd", 137, 138, 162, 35, "RB2000", PictureFace::Product},
    PictureButtonRow{"ABEthAsciiDf1ModelCmd", 139, 140, 162, 35, "AB Ethernet, ASCII, DF1", PictureFace::Model},
    PictureButtonRow{"ABEthModbusModelCmd", 141, 142, 162, 35, "AB Ethernet, Modbus", PictureFace::Model},
};

const PictureButtonRow* PointerOrNull(decltype(kTable)::const_iterator row) {
  return row == kTable.end() ? nullptr : &*row;
}

}  // namespace

std::span<const PictureButtonRow> PictureTable() { return kTable; }

const PictureButtonRow* FindPicture(int number) {
  return PointerOrNull(std::ranges::find_if(
      kTable, [number](const PictureButtonRow& row) { return row.raised == number || row.pressed == number; }));
}

const PictureButtonRow* FindPictureButton(std::string_view controlName) {
  return PointerOrNull(std::ranges::find(kTable, controlName, &PictureButtonRow::name));
}

int RaisedPicture(int number) {
  const PictureButtonRow* row = FindPicture(number);
  return row ? row->raised : number;
}

int PressedPicture(int number) {
  const PictureButtonRow* row = FindPicture(number);
  return row ? row->pressed : number;
}

}  // namespace vk32
