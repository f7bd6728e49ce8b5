#pragma once

#include <string>

namespace wib {

// How the program talks to the person in front of it: message boxes, its own
// two-button question box and the status window with its progress bar. The
// Qt dialogs, the headless logger and the test recorder implement it; texts
// are passed exactly as the program words them.
class Prompter {
  public:
    virtual ~Prompter() = default;

    virtual void message(const std::string& text) = 0;
    // Returns 1 for the first button, 2 for the second.
    virtual int question(const std::string& text) = 0;

    virtual void statusOpen(const std::string& caption) = 0;
    virtual void status(const std::string& text) = 0;
    // Percent, 0..100.
    virtual void progress(int percent) = 0;
    virtual void statusClose() = 0;
};

}  // namespace wib
