// SPDX-License-Identifier: GPL-3.0-or-later
#include "anim/animation_plan.h"

#include <cmath>

#include "anim/frame_rate.h"
#include "core/workspace.h"

namespace wib {

namespace {

constexpr std::uint64_t kMegabyte = 1048576;

}  // namespace

std::optional<std::string> FrameCountProblem(long long frames) {
    if (frames < 2) {
        return kTooFewFramesMessage;
    }
    return std::nullopt;
}

std::string FormatOneDecimalNoZeros(double value) {
    const long long tenths = std::llround(std::fabs(value) * 10);
    std::string text = value < 0 && tenths != 0 ? "-" : "";
    if (tenths >= 10) {
        text += std::to_string(tenths / 10);
    }
    text += '.';
    if (tenths % 10 != 0) {
        text += static_cast<char>('0' + tenths % 10);
    }
    return text;
}

std::string ProjectLengthText(long long frames, const std::string& rateText) {
    const double rate = FrameRateFromText(rateText);
    return std::to_string(frames) + " frames at " + rateText + " fps = " +
           FormatOneDecimalNoZeros(static_cast<double>(frames) / (rate > 1 ? rate : 1)) +
           " seconds";
}

std::string RequiredMemoryText(long long frames, int width, int height) {
    const long long bytes = frames * width * height * 3LL;
    return std::to_string(bytes / static_cast<long long>(kMegabyte)) + " MB. required";
}

std::string MemoryLineText(std::uint64_t freeBytes, std::uint64_t totalBytes) {
    return std::to_string(freeBytes / kMegabyte) + " MB physical memory free of " +
           std::to_string(totalBytes / kMegabyte) + " MB";
}

void MakeDefaultFrameRate(Workspace& workspace, const std::string& rateText) {
    workspace.host.preferences.setValue("Settings", "DefaultFrameRate", rateText);
    workspace.host.prompter.message("Default frame rate is " + rateText);
}

}  // namespace wib
