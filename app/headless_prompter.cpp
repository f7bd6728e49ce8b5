// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/headless_prompter.h"

#include <sstream>

namespace wib {

std::string OneLine(const std::string& text) {
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
            continue;
        }
        if (text[i] == '\n' || text[i] == '\r') {
            line += "\\n";
        } else {
            line += text[i];
        }
    }
    return line;
}

void HeadlessPrompter::write(const std::string& line) {
    std::fprintf(out_, "%s\n", line.c_str());
    std::fflush(out_);
}

void HeadlessPrompter::messageBox(const std::string& text, const std::string&) {
    write("MessageBox: " + OneLine(text));
}

int HeadlessPrompter::questionBox(const std::string& text, const std::string&) {
    const int answer = answer_ > 2 ? 2 : answer_;
    write("Question: " + OneLine(text) + " -> " + std::to_string(answer));
    return answer;
}

int HeadlessPrompter::threeChoiceBox(const std::string& text, const std::string&,
                                     const std::string&, const std::string&, const std::string&) {
    write("Question: " + OneLine(text) + " -> " + std::to_string(answer_));
    return answer_;
}

double HeadlessPrompter::valueBox(const std::string& prompt, double initial, double, double) {
    std::ostringstream line;
    line << "ValueBox: " << OneLine(prompt) << " -> " << initial;
    write(line.str());
    return initial;
}

std::string HeadlessPrompter::requestFileOpen(const std::string& title, const std::string&) {
    write("RequestFile: " + OneLine(title) + " -> cancelled");
    return {};
}

std::string HeadlessPrompter::requestFileSave(const std::string& title, const std::string&) {
    write("RequestFile: " + OneLine(title) + " -> cancelled");
    return {};
}

std::string HeadlessPrompter::directoryBrowse(const std::string& title) {
    write("DirectoryBrowse: " + OneLine(title) + " -> cancelled");
    return {};
}

void HeadlessPrompter::statusOpen(const std::string& caption) {
    write("Status: " + OneLine(caption));
}

void HeadlessPrompter::status(const std::string& text) {
    write("Status: " + OneLine(text));
}

void HeadlessPrompter::progress(int) {}

void HeadlessPrompter::statusClose() {}

}  // namespace wib
