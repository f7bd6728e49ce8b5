// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/workspace.h"

namespace wib::testing {

// Records every message, question and status call; questions are answered
// from `answers` in turn, then with `defaultAnswer`.
class RecordingPrompter : public Prompter {
  public:
    void messageBox(const std::string& text, const std::string&) override {
        messages.push_back(text);
    }
    int questionBox(const std::string& text, const std::string& title) override;
    int choiceBox(const std::string& text, const std::string& title, const std::string& first,
                  const std::string& second) override;
    int threeChoiceBox(const std::string& text, const std::string& title, const std::string& first,
                       const std::string& second, const std::string& third) override;
    double valueBox(const std::string& prompt, double initial, double, double) override {
        requests.push_back(prompt);
        return initial;
    }
    std::string requestFileOpen(const std::string& title, const std::string&) override {
        requests.push_back(title);
        return fileAnswer;
    }
    std::string requestFileSave(const std::string& title, const std::string&) override {
        requests.push_back(title);
        return fileAnswer;
    }
    std::string directoryBrowse(const std::string& title) override {
        requests.push_back(title);
        return fileAnswer;
    }
    void statusOpen(const std::string& caption) override { statusLog.push_back("open:" + caption); }
    void status(const std::string& text) override { statusLog.push_back("text:" + text); }
    void progress(int percent) override { progressLog.push_back(percent); }
    void statusClose() override { statusLog.push_back("close"); }
    // The user cancels at the poll after `cancelAfterPolls` earlier ones.
    bool cancelRequested() override { return cancelPolls++ >= cancelAfterPolls; }
    int cancelAfterPolls = 1 << 30;
    int cancelPolls = 0;

  private:
    int answer(const std::string& text);

  public:
    std::vector<std::string> messages;
    std::vector<std::string> questions;
    // Each question's buttons: "Yes/No" for the question box, else the captions given.
    std::vector<std::string> buttons;
    std::vector<int> answers;
    int defaultAnswer = 2;
    std::vector<std::string> requests;  // value and file requests, by prompt
    std::string fileAnswer;
    std::vector<std::string> statusLog;
    std::vector<int> progressLog;
};

class MemoryPreferences : public Preferences {
  public:
    std::optional<std::string> value(const std::string& section,
                                     const std::string& key) const override;
    void setValue(const std::string& section, const std::string& key,
                  const std::string& value) override {
        values[{section, key}] = value;
    }
    std::map<std::pair<std::string, std::string>, std::string> values;
};

// Stands still unless moved by hand, or by `step` at every reading, as code
// that waits on the clock needs.
class FakeClock : public Clock {
  public:
    std::chrono::nanoseconds now() const override {
        const auto reading = time;
        time += step;
        return reading;
    }
    void sleepFor(std::chrono::nanoseconds duration) override { time += duration; }
    mutable std::chrono::nanoseconds time{0};
    std::chrono::nanoseconds step{0};
};

// Counts what the document asked of the windows.
class RecordingView : public View {
  public:
    void refresh() override { ++refreshes; }
    void refreshArea(int, int, int, int) override { ++areaRefreshes; }
    void completeRefresh() override { ++completeRefreshes; }
    void documentResized() override { ++resizes; }
    void viewChanged() override { ++viewChanges; }
    void processPendingEvents() override {
        ++eventPumps;
        if (pendingEvents) {
            pendingEvents();
        }
    }
    void setCanvasEnabled(bool enabled) override { canvasEnabled = enabled; }
    void setMainFrameEnabled(bool enabled) override { mainFrameEnabled = enabled; }
    void pointerShapeChanged(int shape) override { pointerShapes.push_back(shape); }
    long long canvasWindowId() override { return canvasId; }
    long long mainWindowId() override { return mainId; }
    bool setTitleBarImage(const std::string& path) override {
        titleBarImages.push_back(path);
        return true;
    }

    int refreshes = 0;
    int areaRefreshes = 0;
    int completeRefreshes = 0;
    int resizes = 0;
    int viewChanges = 0;
    int eventPumps = 0;
    bool canvasEnabled = true;
    bool mainFrameEnabled = true;
    std::vector<int> pointerShapes;
    long long canvasId = 0;
    long long mainId = 0;
    std::vector<std::string> titleBarImages;
    // What the interface's pending events do when they are let through.
    std::function<void()> pendingEvents;
};

class RecordingLog : public Log {
  public:
    void line(const std::string& text) override { lines.push_back(text); }
    std::vector<std::string> lines;
};

class FakeSystemInfo : public SystemInfo {
  public:
    int processorCount() const override { return processors; }
    std::uint64_t availableMemoryBytes() const override { return memory; }
    int processors = 2;
    std::uint64_t memory = std::uint64_t{8} << 30;
};

// A Workspace on fakes. The undo budget defaults to 8 MB so tests stay small;
// set it before calling newDocument() to try others.
class TestHost {
  public:
    TestHost();
    void setUndoBudget(long long megabytes);
    // A fresh document as the program starts one (white, alpha 255, one undo step).
    void newDocument(int width, int height);

    RecordingPrompter prompter;
    MemoryPreferences preferences;
    FakeClock clock;
    RecordingView view;
    FakeSystemInfo system;
    RecordingLog log;
    Workspace workspace;
};

}  // namespace wib::testing
