// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// The fixed texts of the layered picture and stored animation files.

namespace wib {

inline constexpr const char* kLayeredWrongType = "This is not a layered picture (.lyr) file.";
inline constexpr const char* kAnimationWrongType = "This is not a stored animation (.wta) file.";
inline constexpr const char* kContainerNewerVersion =
    "This file was saved by a newer version of the program and cannot be opened.";
inline constexpr const char* kContainerTruncated =
    "This file ends early: it is damaged or was not saved whole.";
inline constexpr const char* kContainerChecksum =
    "This file is damaged: its contents do not match its checksum.";
inline constexpr const char* kContainerInconsistent =
    "This file is damaged: its contents do not fit together.";
inline constexpr const char* kContainerNoMemory = "There is not enough memory to open this file.";

}  // namespace wib
