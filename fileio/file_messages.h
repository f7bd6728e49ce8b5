// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

// The fixed texts of image file input and output, spelt as the program has
// always spelt them.

namespace wib {

inline constexpr const char* kCorruptFileMessage =
    "An error occured reading this file.  It may be corrupt, or the wrong file type.";

inline constexpr const char* kTargaNoImageMessage = "No Image Present";
inline constexpr const char* kTargaColorMappedRleMessage =
    "Color mapped, RLE compressed Targas not currently supported";
inline constexpr const char* kTargaGreyscaleRleMessage =
    "Greyscale RLE compressed Targas not currently supported";
// Follows the pixel depth: "16 bit Targas not currently supported".
inline constexpr const char* kTargaDepthUnsupported = " bit Targas not currently supported";
inline constexpr const char* kTargaLoadingColorMapped = "Loading color mapped Targa(tm)";
inline constexpr const char* kTargaLoadingUncompressed = "Loading uncompressed Targa(tm)";
inline constexpr const char* kTargaLoadingCompressed = "Loading comressed Targa(tm)";

inline constexpr const char* kBitmapNotBmp = "Not a BMP";
inline constexpr const char* kBitmapDepthUnsupported = "Currently loads only 8 and 24 bit files";
inline constexpr const char* kBitmapCompressed = "Compression not currently supported.";

// cDIB: each is followed by a blank and the file name.
inline constexpr const char* kDibMissing = "File does not exist:";
inline constexpr const char* kDibLocked = "File is locked - cannot access:";
inline constexpr const char* kDibNotBitmap = "File is not a supported bitmap format:";

inline constexpr const char* kStatusCaption = "Processing...";
inline constexpr const char* kConvertStarting = "Computer stuff happening...";
inline constexpr const char* kConvertWaiting = "Waiting on file conversion.";
inline constexpr const char* kConvertTimedOut = "Timed out waiting for conversion service";
inline constexpr const char* kConvertCompleted = "Conversion completed.";
inline constexpr const char* kConvertSuccess = "Conversion success...";
inline constexpr const char* kConvertProcessing = "Processing...";
inline constexpr const char* kSaveCanceled = "Save canceled";

inline constexpr const char* kOpenRasterNotZip =
    "This OpenRaster file is damaged: it is not a readable zip archive.";
inline constexpr const char* kOpenRasterWrongMimetype =
    "This file is not an OpenRaster image: its mimetype entry is missing or wrong.";
inline constexpr const char* kOpenRasterNoStack = "This OpenRaster file has no stack.xml.";
inline constexpr const char* kOpenRasterBadStack = "This OpenRaster file's stack.xml is damaged.";
inline constexpr const char* kOpenRasterNoLayers = "This OpenRaster file has no layers.";
inline constexpr const char* kOpenRasterTooLarge =
    "This OpenRaster file's layers need more memory than the program allows.";
// Followed by a blank and the layer's image name inside the file.
inline constexpr const char* kOpenRasterBadLayer =
    "A layer image of this OpenRaster file is missing or damaged:";
inline constexpr const char* kOpenRasterIncompletePicture =
    "The picture cannot be saved as OpenRaster: its layers do not match its size.";

// For files that cannot be opened or written at all.
inline std::string CannotOpenMessage(const std::string& path) {
    return "The file cannot be opened: " + path;
}
inline std::string CannotWriteMessage(const std::string& path) {
    return "The file cannot be written: " + path;
}
// With the system's reason on a line of its own: "No space left on device".
inline std::string CannotWriteMessage(const std::string& path, const std::string& reason) {
    return reason.empty() ? CannotWriteMessage(path) : CannotWriteMessage(path) + "\n" + reason;
}

}  // namespace wib
