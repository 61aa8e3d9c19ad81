// What the wizards share in reading and writing their files.
#include "core/ConfigurationForm.h"

namespace vk32 {

void ConfigurationForm::RemoveData(const Bytes&) { throw RuntimeFault(RuntimeFault::InvalidCall); }

void ConfigurationForm::Parameter_Setup_VK() { throw RuntimeFault(RuntimeFault::InvalidCall); }

void ConfigurationForm::Parameter_Setup_RB() { throw RuntimeFault(RuntimeFault::InvalidCall); }

bool ConfigurationForm::SaveFile(std::string product, std::string modelTag, RecordFile& file) {
  return TrapRecord(product, modelTag, file);
}

bool ConfigurationForm::OpenFile(std::string& product, std::string& modelTag, RecordFile& file) {
  return TrapRecord(product, modelTag, file);
}

bool ConfigurationForm::TrapRecord(std::string& product, std::string& modelTag, RecordFile& file) {
  try {
    Record(file, product, modelTag);
    return true;
  } catch (const RuntimeFault&) {
    return false;
  }
}

}  // namespace vk32
