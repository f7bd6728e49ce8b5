// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdio>

#include "core/host/prompter.h"

namespace wib {

// Message and question boxes of headless mode: each is one line on standard
// error ("MessageBox: <text>", "Question: <text> -> <answer>", line breaks
// written as \n) and questions take the button chosen on the command line,
// so that nothing waits for a person. A two-button question answered "third"
// takes its second button.
class HeadlessPrompter : public Prompter {
  public:
    explicit HeadlessPrompter(int answer, std::FILE* out = stderr) : answer_(answer), out_(out) {}

    void messageBox(const std::string& text, const std::string& title) override;
    int questionBox(const std::string& text, const std::string& title) override;
    int threeChoiceBox(const std::string& text, const std::string& title, const std::string&,
                       const std::string&, const std::string&) override;
    double valueBox(const std::string& prompt, double initial, double minimum,
                    double maximum) override;
    std::string requestFileOpen(const std::string& title, const std::string& filter) override;
    std::string requestFileSave(const std::string& title, const std::string& filter) override;
    std::string directoryBrowse(const std::string& title) override;
    void statusOpen(const std::string& caption) override;
    void status(const std::string& text) override;
    void progress(int percent) override;
    void statusClose() override;

  private:
    void write(const std::string& line);
    int answer_;
    std::FILE* out_;
};

// Line breaks as the two characters \n, so that one message is one line.
std::string OneLine(const std::string& text);

}  // namespace wib
