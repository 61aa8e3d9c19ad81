// The small procedures that all forms share.
#pragma once

#include <string>

#include "forms/Form.h"

namespace vk32 {

struct App;

/// Sets the faces of the form's NextCmd and BackCmd: Finish on the last page, but Next on page 0; no Back on page 0.
void UpdateWizardButtons(Form& form, int page, int lastPage);
/// Asks the user to put the device into configuration mode; returns when he has pressed OK. Does not look at the
/// device.
void ShowConfigureReminder(App& app);
/// 0 if the text is four parts parted by points, each a number from 0 to 255; else 1. The fourth part takes all the
/// rest of the text, so that 1.2.3.4.5 passes.
int ValidateIPAddress(const std::string& text);
/// The looser check: each part is the number that it starts with, and 0 if it starts with none.
bool IsIPAddress(const std::string& text);
/// Checks EthIPTxt, EthSubTxt and, if it isn't empty, EthGateTxt. 0 if all are good; 1 if one is not, after telling so.
int CheckEthernetFields(App& app, Form& form);
/// The first address that is invalid, or nullptr.
const TextBox* InvalidEthernetField(const Form& form);
/// Opens the address in the default browser. What becomes of it isn't looked at.
void OpenWebSite(App& app, const std::string& url);

}  // namespace vk32
