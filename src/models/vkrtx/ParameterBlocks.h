// The parameter blocks of the VK-RTX, as the device defines them.
#pragma once

#include <array>

#include "core/Parameters.h"
#include "platform/SerialDriver.h"

namespace vk32 {

using BlockImages = std::array<Bytes, 256>;  // by block number

/// Blocks 1 to 5: the ports.
void BuildPortBlocks(Parameters& parameters, BlockImages& blocks);
/// Blocks 20 to 26 and 30 to 43. An empty table leaves its blocks as they were.
void BuildModbusModelBlocks(Parameters& parameters, BlockImages& blocks);
/// Blocks 50 and 51.
void BuildClientBlocks(const Parameters& parameters, BlockImages& blocks);
/// Blocks 100 to 103.
void BuildRouteBlocks(const Parameters& parameters, BlockImages& blocks);
/// Block 10: empty while no channel needs conversion.
void BuildConversionBlock(Parameters& parameters, BlockImages& blocks);
// All fault DoesNotFit if a value has no form in its bytes.

/// How many records of a table a block holds may differ between the two.
enum class TablesAs { Read, Written };
/// Turns a block into parameters: one that was read, or one that was written and is filled up with zeros; 64 bytes of
/// data at least. A number that is none of the model's does nothing, nor does a block that the device does not give
/// back.
void DecodeBlock(int block, const Bytes& data, Parameters& parameters, TablesAs tables = TablesAs::Read);

}  // namespace vk32
