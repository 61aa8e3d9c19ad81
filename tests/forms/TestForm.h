// A form with a control of each kind that the user or code acts on; it notes which handlers ran.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "forms/ControlArray.h"
#include "forms/Forms.h"

namespace vk32 {

class TestForm : public Form {
 public:
  explicit TestForm(Forms& forms, const char* name = "TestForm") : Form(forms, name, "Test", 6000, 6000) {}

  std::string TakeLog() { return std::exchange(log, {}); }

  std::string log;                  // a word for each handler that ran
  std::function<void()> onNext;     // what else NextCmd does
  std::function<void()> onTick;     // what TickTmr does
  std::function<bool(char)> onKey;  // what gets into KeyTxt

 private:
  Handler Note(const char* word) {
    return [this, word] { log += std::string(word) + " "; };
  }
  void Form_Load() override { log += "load "; }

 public:
  // clang-format off
  Frame        OuterFrame {*this, "OuterFrame", {}};
  Frame        InnerFrame {OuterFrame, "InnerFrame", {}};
  ImageButton  NextCmd    {InnerFrame, "NextCmd", {}, [this] { log += "next "; if (onNext) onNext(); }};
  TextBox      KeyTxt     {InnerFrame, "KeyTxt", {}, Note("text")};
  ComboBox     ChoiceLst  {InnerFrame, "ChoiceLst", {}, {"One", "Two"}, Note("list")};
  ComboBox     TextCbo    {InnerFrame, "TextCbo", {}, {"One", "Two"}, Note("combo"), ComboBox::Style::WithTextPart};
  CheckBox     FlagChk    {InnerFrame, "FlagChk", {}, "", Note("check")};
  VScrollBar   RowsVScroll{InnerFrame, "RowsVScroll", {}, Note("scroll")};
  OptionButton AOpt       {InnerFrame, "AOpt", {}, "", true, Note("a")};
  OptionButton BOpt       {InnerFrame, "BOpt", {}, "", false, Note("b")};
  OptionButton COpt       {OuterFrame, "COpt", {}, "", true, Note("c")};
  OptionButton DOpt       {*this, "DOpt", {}, "", true, Note("d")};
  Timer        TickTmr    {*this, "TickTmr", 100, false, [this] { if (onTick) onTick(); }};
  ControlArray<Label> RowLbl {"RowLbl", 2, 4, [this](ControlName name, int) {
    return std::make_unique<Label>(*this, name, Place(), "");
  }};
  // clang-format on
};

}  // namespace vk32
