// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace wib {

// How the program talks to the person in front of it: message boxes, its own
// two-button question box, numeric and file requests, and the status window
// with its progress bar. The Qt dialogs, the headless logger and the test
// recorder implement it; texts are passed exactly as the program words them.
class Prompter {
  public:
    virtual ~Prompter() = default;

    virtual void messageBox(const std::string& text, const std::string& title) = 0;
    // Returns 1 for the first button (Yes), 2 for the second (No).
    virtual int questionBox(const std::string& text, const std::string& title) = 0;
    // A two-button box with the buttons' own captions ("Retry", "Cancel");
    // 1 for the first, 2 for the second. Where no such box can be shown the
    // question box stands in for it.
    virtual int choiceBox(const std::string& text, const std::string& title, const std::string&,
                          const std::string&) {
        return questionBox(text, title);
    }
    // A three-button box with the buttons' own captions ("Save", "Don't Save",
    // "Cancel"); 1, 2 or 3 for the button chosen.
    virtual int threeChoiceBox(const std::string& text, const std::string& title,
                               const std::string& first, const std::string& second,
                               const std::string& third) = 0;
    // A message box with the warning sign; a plain message box where there is none.
    virtual void warningBox(const std::string& text, const std::string& title) {
        messageBox(text, title);
    }
    // A number between `minimum` and `maximum`; `initial` when cancelled.
    virtual double valueBox(const std::string& prompt, double initial, double minimum,
                            double maximum) = 0;
    // A path, or empty text when cancelled. `filter` is in the dialogs' own
    // form: "Targa (*.tga);;All files (*)".
    virtual std::string requestFileOpen(const std::string& title, const std::string& filter) = 0;
    virtual std::string requestFileSave(const std::string& title, const std::string& filter) = 0;
    virtual std::string directoryBrowse(const std::string& title) = 0;

    virtual void statusOpen(const std::string& caption) = 0;
    virtual void status(const std::string& text) = 0;
    // Percent, 0..100.
    virtual void progress(int percent) = 0;
    virtual void statusClose() = 0;
    // Offers the user a way to stop the work the open status window shows
    // (its Cancel button, Esc); `cancelRequested` then says whether they took
    // it. Where nothing can be offered, nothing is ever cancelled.
    virtual void allowCancel() {}
    virtual bool cancelRequested() { return false; }

    void message(const std::string& text) { messageBox(text, "Wibbleton"); }
    int question(const std::string& text) { return questionBox(text, "Wibbleton"); }
};

}  // namespace wib
