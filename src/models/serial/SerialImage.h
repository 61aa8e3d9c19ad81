// The parameter image of the RB2000 and RB3000: 224 registers of two bytes, as the devices define it.
#pragma once

#include "models/registers/LineChoices.h"
#include "models/registers/RegisterList.h"

namespace vk32 {

/// The image, register by register. A 16-bit field is stored low-order byte first. What stands in no row keeps the
/// value that it has: 0, or whatever a device or a file gave it.
namespace SerialImage {

constexpr int Registers = 224;

// clang-format off
constexpr RegisterByte
    StationAddress  { 7, Half::High},  // of DF1 on channel A, 0 to 255
    SpeedA          { 8, Half::High},  LineFlagsA       { 8, Half::Low},
    SpeedB          { 9, Half::High},  LineFlagsB       { 9, Half::Low},
                                       Df1Flags         {12, Half::Low},
    SpecificAddress {20, Half::High},  ModbusFlags      {20, Half::Low},  // address 1 to 247
    BroadcastStart  {21, Half::High},  BroadcastEnd     {21, Half::Low},
    PlcType         {22, Half::High},  AddressDecoding  {22, Half::Low};  // decoding 0 NXYY:Z, 1 NXYZ:Z, 2 NYXZ:Z
// clang-format on

// Slots 0 to 39 have five registers each: Modbus start, Modbus end, Allen-Bradley file, word, float flag (first byte).
constexpr int SlotCount = 40;
constexpr int SlotStart = 24, SlotRegisters = 5;
constexpr int FloatField = 4;
constexpr int SlotRegister(int slot, int field) { return SlotStart + SlotRegisters * slot + field; }

// The mask of ModbusFlags that no list holds.
constexpr int SpecificAddressMask = 32;

/// Is register r in the product's configuration file?
constexpr bool InFile(int r) { return r >= 6 && r < Registers && r != 11 && !(r >= 16 && r <= 19); }

// The lists. Every row: text, then when it is picked (byte & test == value), then the mask of the bits that it writes.

inline ChoiceTable Speed() {
  ChoiceTable speeds = LineChoices::Speeds();
  speeds.push_back(Code("230400", 13));
  return speeds;
}

// Line flags
inline ChoiceTable Parity() { return {LineChoices::NoParity, LineChoices::OddParity, LineChoices::EvenParity}; }
inline ChoiceTable Handshaking() { return {{"None", 1, 0, 1}, {"Active", 1, 1, 1}}; }
inline ChoiceTable Connection() { return {{"RS-232", 32, 0, 96}, {"RS-422", 96, 32, 96}, {"RS-485", 96, 96, 96}}; }

// Modbus flags
inline ChoiceTable DeviceType() { return {{"Slave", 2, 0, 2}, {"Master", 2, 2, 2}}; }
inline ChoiceTable Protocol() { return {{"RTU", 1, 0, 1}, {"ASCII", 1, 1, 1}}; }
inline ChoiceTable Broadcast() { return {{"Yes", 4, 4, 4}, {"No", 4, 0, 4}}; }

inline ChoiceTable PlcTypes() { return {Code("PLC-5", 0), Code("PLC-3", 1), Code("SLC/MicroLogix/ControlLogix", 2)}; }

/// "1" stands for 0 as well: a device without a specific address.
ChoiceTable SpecificAddresses();
/// The octal texts of 0 to 63. The two directions differ on purpose, as the devices do: a byte picks its octal text,
/// but a text writes its digits read as a decimal number. So 10 shows as "12", and "12" writes 12.
ChoiceTable BroadcastAddresses();

}  // namespace SerialImage

}  // namespace vk32
