// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/test_host.h"

#include "core/document_build.h"

namespace wib::testing {

int RecordingPrompter::questionBox(const std::string& text, const std::string&) {
    buttons.emplace_back("Yes/No");
    return answer(text);
}

int RecordingPrompter::choiceBox(const std::string& text, const std::string&,
                                 const std::string& first, const std::string& second) {
    buttons.push_back(first + "/" + second);
    return answer(text);
}

int RecordingPrompter::threeChoiceBox(const std::string& text, const std::string&,
                                      const std::string& first, const std::string& second,
                                      const std::string& third) {
    buttons.push_back(first + "/" + second + "/" + third);
    return answer(text);
}

int RecordingPrompter::answer(const std::string& text) {
    questions.push_back(text);
    if (questions.size() <= answers.size()) {
        return answers[questions.size() - 1];
    }
    return defaultAnswer;
}

std::optional<std::string> MemoryPreferences::value(const std::string& section,
                                                    const std::string& key) const {
    const auto found = values.find({section, key});
    if (found == values.end()) {
        return std::nullopt;
    }
    return found->second;
}

TestHost::TestHost() : workspace(HostServices{prompter, preferences, clock, view, system, log}) {
    setUndoBudget(8);
}

void TestHost::setUndoBudget(long long megabytes) {
    preferences.setValue("Settings", "mem_MaxUndo", std::to_string(megabytes));
}

void TestHost::newDocument(int width, int height) {
    NewDocument(workspace, width, height);
}

}  // namespace wib::testing
