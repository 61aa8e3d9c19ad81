// The serial ports that there are.
#include "shell/PortsFound.h"

#include <algorithm>

#include "platform/PortHolder.h"

namespace vk32 {
namespace {

constexpr int OpenedListWidth = 4020;  // twips

}  // namespace

PortsFound::PortsFound(App& app, Form& form, ComboBox& portsCbo) : app_(app), form_(form), portsCbo_(portsCbo) {
  portsCbo_.ListWidth = OpenedListWidth;
  PortsVScroll.LargeChange = Rows;
  if (watch_.Handle() >= 0) PortsTmr.SleepUntilReadable(watch_.Handle());
}

void PortsFound::Refresh() {
  // Watched before it looks: what changes in between is then looked at again.
  const PortPlaces places = app_.ports.Places();
  const auto chosen = app_.ports.Find(app_.globals.ComPortText);
  watch_.Watch(places.folders, places.paths, chosen ? chosen->path : "");
  found_ = app_.ports.FindAll();
  PortLbl.Caption = ChosenWords();
  NoPortLbl.Visible = found_.empty();
  PortsVScroll.Max = std::max(0, static_cast<int>(found_.size()) - Rows);
  PortsVScroll.Visible = PortsVScroll.Max > 0;
  ShowRows();
  ShowNotes();
}

void PortsFound::PortsTmr_Timer() {
  if (!form_.IsLoaded()) return;
  const bool changed = watch_.TakeChange();
  if (changed || lookAgain_ || watch_.Handle() < 0) Refresh();
  // A program locks a port only after it has opened it, and a link is made behind its device.
  lookAgain_ = changed;
  if (!lookAgain_ && watch_.Handle() >= 0) PortsTmr.SleepUntilReadable(watch_.Handle());
}

void PortsFound::ShowRows() {
  for (int row = 1; row <= Rows; ++row) {
    RowLabel& label = PortFoundLbl[row];
    const auto index = static_cast<std::size_t>(PortsVScroll.Value + row - 1);
    label.Visible = index < found_.size();
    if (!label.Visible) continue;
    const FoundPort& port = found_[index];
    label.Caption = port.name + "\t" + port.device.kind + "\t" + port.device.path;
    label.Chosen = port.name == app_.globals.ComPortText;
    label.Width = PortsVScroll.Visible ? PortsVScroll.Left - label.Left : OpenedListWidth;
  }
}

void PortsFound::ShowNotes() {
  std::vector<EntryNote> notes;
  for (const std::string& entry : portsCbo_.Entries()) {
    const auto at = std::find_if(found_.begin(), found_.end(), [&](const auto& port) { return port.name == entry; });
    const bool there = at != found_.end();
    notes.push_back({there ? at->device.kind : "", !there && PortNames::Number(entry) != 0});
  }
  portsCbo_.Notes = std::move(notes);
}

std::string PortsFound::ChosenWords() const {
  const std::string& name = app_.globals.ComPortText;
  if (PortNames::Number(name) == 0) return "No port is chosen";
  const auto device = app_.ports.Find(name);
  if (!device) return "No device stands behind " + name;
  const std::string what = device->kind.empty() ? device->path : device->kind + ", " + device->path;
  if (!PortNames::DeviceIsThere(device->path)) return what + ",\r\nis missing";
  const auto holder = HolderOf(device->path);
  if (!holder) return what + (TellsHolders() ? ", free" : "");
  if (holder->isSelf) return what + ",\r\nin use by VK32 itself";
  return what + ",\r\nheld by " + holder->program + " (" + std::to_string(holder->process) + ")";
}

void PortsFound::PortFoundLbl_Click(int row) {
  const auto index = static_cast<std::size_t>(PortsVScroll.Value + row - 1);
  if (index < found_.size()) portsCbo_.Text = std::string(found_[index].name);
}

}  // namespace vk32
