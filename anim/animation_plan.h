// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace wib {

class Workspace;

inline constexpr const char* kTooFewFramesMessage =
    "You cannot create an animation with 1 or less frames.";

// What the creation panel shows and checks before an animation is made.

// The creation panel refuses fewer than 2 frames.
std::optional<std::string> FrameCountProblem(long long frames);

// "12 frames at 24 fps = .5 seconds": the length is the frame count divided
// by the rate (a rate of 1 or less counting as 1, as in playback), in the
// format "##.#".
std::string ProjectLengthText(long long frames, const std::string& rateText);

// A number in the format "##.#": rounded to one decimal, halves away from
// zero, with no leading zero and the point kept when the decimal is zero
// (0.5 gives ".5", 5 gives "5.", 12.25 gives "12.3").
std::string FormatOneDecimalNoZeros(double value);

// frames x width x height x 3 bytes in whole megabytes, rounded down:
// "95 MB. required".
std::string RequiredMemoryText(long long frames, int width, int height);

// "2048 MB physical memory free of 7936 MB".
std::string MemoryLineText(std::uint64_t freeBytes, std::uint64_t totalBytes);

// Keeps the rate as the preference "DefaultFrameRate" and says so.
void MakeDefaultFrameRate(Workspace& workspace, const std::string& rateText);

}  // namespace wib
