// The file dialogs and the common frame of a configuration file.
#pragma once

#include <string>

#include "core/ConfigurationForm.h"

namespace vk32 {

struct App;
struct Parameters;

/// Asks for a path and writes the form's file. True when it was written; a cancel and a failed write give false and
/// tell the user nothing. A file that stood there is replaced only by a complete one.
/// `held`: what is written in place of the present parameters.
bool SaveConfigFile(App& app, ConfigurationForm& form, const std::string& product, const std::string& modelTag,
                    const Parameters* held = nullptr);
/// Asks for a path and reads the form's file. The form's dialog keeps the path. True when it was read and its values
/// are in the controls; else it has told the user why, and the parameter variables are as they were.
bool OpenConfigFile(App& app, ConfigurationForm& form, const std::string& product, const std::string& modelTag);
/// Moves the parameters to the controls, by the methods that the product has.
void CallParameterSetup(const App& app, ConfigurationForm& form);

}  // namespace vk32
