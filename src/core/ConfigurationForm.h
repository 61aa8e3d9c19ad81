// The contract between a product's wizard and the code that moves and keeps its parameters.
#pragma once

#include <string>

#include "core/RecordFile.h"
#include "forms/Form.h"
#include "platform/SerialDriver.h"

namespace vk32 {

/// A wizard offers what its product's transfer styles and file need; the others fault 5. It has a timer TimeOutTmr and
/// a file dialog OpenSaveConfigDialog.
class ConfigurationForm : public Form {
 public:
  using Form::Form;

  /// Decodes the reply of one block, of number BlockNumber, into the parameter variables. Data begin at position 2.
  virtual void RemoveData(const Bytes& reply);
  /// Moves the parameter variables to the controls.
  virtual void Parameter_Setup_VK();
  /// Moves the registers to the controls.
  virtual void Parameter_Setup_RB();

  /// Writes the header and the record. True on success; a fault in the middle gives false. The caller closes the file.
  bool SaveFile(std::string product, std::string modelTag, RecordFile& file);
  /// Reads them; `product` and `modelTag` are what the file says.
  bool OpenFile(std::string& product, std::string& modelTag, RecordFile& file);

  /// Before it goes for another product or model: asks what is to become of values that have changed. False if the
  /// user wants to stay.
  virtual bool MayGo() { return true; }

  /// The second header line of the product's files.
  virtual std::string ModelTag() const = 0;

 protected:
  /// The product's file, field by field: writes or reads, as the file does.
  virtual void Record(RecordFile& file, std::string& product, std::string& modelTag) = 0;

 private:
  bool TrapRecord(std::string& product, std::string& modelTag, RecordFile& file);
};

}  // namespace vk32
