// The layouts of the messages on the wire, as the devices define them. Offsets count from 0, sizes are bytes.
#pragma once

#include <cstdint>

#include "core/Globals.h"

namespace vk32 {

constexpr char Ack = 0x06;
inline const Bytes EndOfExchange{"\xA5\xA5", 2};
inline const Bytes ImageRequest{"TEE"};         // image upload
inline const Bytes ImageReplyStart{"TR"};       // then the length, low byte first
inline const Bytes InfoRequest{"\xA5\xDD", 2};  // device information
inline const Bytes InfoContinue{"\xDD"};
inline const Bytes Restart{"s"};
inline const Bytes FirmwareMode{"\xA5\xFB", 2};  // erases, and waits for the file
inline const Bytes RecoveryProbe{"\x1B"};
inline const Bytes RecoveryNewline{"\x0D"};

/// A5 CE N command high number ext length [data] checksum. N counts the bytes behind it, checksum included; the
/// checksum is Checksum8 of all from the command on.
namespace BlockFrame {
inline const Bytes Start{"\xA5\xCE", 2};
constexpr std::uint8_t Read = 0xF5;
constexpr std::uint8_t Write = 0xFA;
constexpr int Count = 2, Command = 3, AddressHigh = 4, Number = 5, AddressExt = 6, Length = 7, Data = 8;  // offsets
constexpr int ReadLength = 64;               // data bytes asked for in every read
constexpr int LongestData = 249;             // of a write: the length byte counts six bytes more
constexpr int ReplyLength = ReadLength + 2;  // a leading byte, the data, Checksum8 over all before it
}  // namespace BlockFrame

/// "NEE" length 0 0 prefix image checksum. The length counts prefix and image, low byte first; the checksum is
/// Checksum16 of the same bytes.
namespace ImageFrame {
inline const Bytes Start{"NEE"};
constexpr std::uint8_t Code = 208;                 // selects this frame; it does not go on the wire
constexpr int Length = 3, Prefix = 7, Image = 17;  // offsets
constexpr int PrefixLength = 10;                   // 00 01, then eight bytes 00
constexpr int ChecksumLength = 2;
}  // namespace ImageFrame

}  // namespace vk32
