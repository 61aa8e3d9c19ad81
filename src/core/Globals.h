// The public variables through which all forms and modules talk: the state of the current job.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/Parameters.h"
#include "platform/SerialDriver.h"

namespace vk32 {

/// 16-bit flags: False is 0, True is all bits set.
using Flag = std::uint16_t;
constexpr Flag FlagFalse = 0;
constexpr Flag FlagTrue = 65535;

/// All start out at 0 or empty. Nothing is kept between two runs of the program.
struct Globals : Parameters {
  // Selection and link
  std::string CurrentProduct;      // "VK5300", "VK-RTX", "RB3000", "RB2000", "RBCard"
  std::string CurrentModel;        // of the VK-RTX: "AB Ethernet, ASCII, DF1" or "AB Ethernet, Modbus"
  std::string LEDPatternText;      // how the device looks when it is ready for the configurator; lines joined by CR LF
  std::int32_t ComPortNumber = 0;  // 1 to 32; 0: no port was ever chosen
  std::string ComPortText;         // "None", or "COM1" to "COM32"
  std::string BaudRate;            // "9600" (RB2000), else "19200"

  // Exchange
  Flag TimeOutFlag = FlagFalse;  // False while waiting, True when the form's TimeOutTmr fired
  Flag CommFailed = FlagFalse;   // True: the last read of a parameter set or of the device information failed
  std::int16_t BlockNumber = 0;
  std::int16_t BlockAddressHigh = 0;    // always 0
  std::int16_t BlockAddressExt = 0;     // always 0
  std::int16_t BlockLength = 0;         // length byte of the frame; 64 in reads
  Bytes BlockData;                      // of the block being written
  std::array<Bytes, 256> BlockTable;    // image of each block, by block number; filled by the model's block builder
  std::vector<std::int16_t> BlockList;  // element 0: count; then the block numbers in the order of the transfer
  Bytes ConfigImage;                    // the registers made into the string that goes in the image message

  // Wizard position
  std::int16_t CurrentPage = 0;
  std::int16_t LastPage = 0;  // where NextCmd means Finish
  std::int16_t FirmwarePage = 0;
  std::int16_t FirmwareLastPage = 0;

  // Editors of the wizards' tables. Set before the editor is loaded.
  std::int16_t RouteFormMode = 0;  // of Route: 0 add, 1 edit
  std::int16_t AbModMapMode = 0;   // of ABModMapping: 0 add, 1 edit, 2 delete
  std::string OwnerForm;           // name of the wizard whose mapping table ABModMapping edits

  // VK5300
  Flag HighwayDefaultsOn = FlagFalse;  // True: the choice of a network type loads its defaults
  std::string FileVersionText;         // first line of a configuration file

  void ClearRegisters();
  /// Bytes RegisterHigh[i], RegisterLow[i] for i from `first`. Empty if `count` is below 1. An index above 256 faults
  /// 9, a register that holds no byte 6.
  Bytes RegistersToString(int first, int count) const;
  /// The reverse, for Len(text) / 2 registers from `first`; an odd byte at the end is dropped. An index above 256
  /// faults 9.
  void LoadRegisters(const Bytes& text, int first);
};

}  // namespace vk32
