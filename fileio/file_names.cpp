// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/file_names.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <string_view>

#include "core/host/prompter.h"

namespace wib {

namespace {

constexpr std::array<std::string_view, 24> kLongExtensions{
    "targa", "cmyk", "dicom", "epdf",  "eps2", "epsf", "epsi",  "fits",
    "gray",  "hpgl", "html",  "jbig",  "jpeg", "miff", "mono",  "mpeg",
    "pcds",  "pict", "rgba",  "shtml", "tiff", "uyvy", "vicar", "viff"};

std::string Lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

bool EndsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

// Where the number starts in the name without its extension.
std::size_t NumberStart(const std::string& stem) {
    std::size_t start = stem.size();
    while (start > 0 && IsDigit(stem[start - 1])) {
        --start;
    }
    return start;
}

}  // namespace

std::string SafeRemoveExt(const std::string& name) {
    if (name.size() > 4 && name[name.size() - 4] == '.') {
        return name.substr(0, name.size() - 4);
    }
    return name;
}

bool SafeHasNumeric(const std::string& name) {
    const std::string stem = SafeRemoveExt(name);
    return stem.size() > 1 && IsDigit(stem.back());
}

int SafeCountNumeric(const std::string& name) {
    std::string stem = SafeRemoveExt(name);
    int count = 0;
    while (!stem.empty() && IsDigit(stem.back())) {
        stem.pop_back();
        ++count;
    }
    return count;
}

std::string SafeGetNumeric(const std::string& name) {
    const std::string stem = SafeRemoveExt(name);
    return stem.substr(NumberStart(stem));
}

std::string SafeRemoveNumeric(const std::string& name) {
    const std::string stem = SafeRemoveExt(name);
    return stem.substr(0, NumberStart(stem));
}

bool CheckforTGA(const std::string& name) {
    return EndsWith(Lower(name), ".tga");
}

bool CheckExtention(const std::string& name) {
    const std::string lower = Lower(name);
    return std::any_of(kLongExtensions.begin(), kLongExtensions.end(),
                       [&lower](std::string_view word) {
                           return EndsWith(lower, word) && lower.size() > word.size() &&
                                  lower[lower.size() - word.size() - 1] == '.';
                       });
}

std::string NextNumberedName(const std::string& name) {
    const std::string stem = SafeRemoveExt(name);
    const std::string extension = name.substr(stem.size());
    const std::string digits = SafeGetNumeric(name);
    std::string next = "1";
    std::size_t width = 4;
    if (!digits.empty()) {
        // Add one to the digits as text, so that no length of number overflows.
        next = digits;
        std::size_t i = next.size();
        while (i > 0 && next[i - 1] == '9') {
            next[--i] = '0';
        }
        if (i == 0) {
            next.insert(next.begin(), '1');
        } else {
            ++next[i - 1];
        }
        width = digits.size();
    }
    if (next.size() < width) {
        next.insert(0, width - next.size(), '0');
    }
    return SafeRemoveNumeric(name) + next + extension;
}

std::string LowerExtension(const std::string& path) {
    return Lower(std::filesystem::path(path).extension().string());
}

std::string EnforceFilename(Prompter& prompter, const std::string& name,
                            const std::string& typeExtension) {
    if (name.size() <= 4) {
        return name;
    }
    const std::string extension = LowerExtension(name);
    if (extension == typeExtension) {
        return name;
    }
    const int answer = prompter.question(
        "Extension did not match file type.\nFilename extension=" + extension +
        "   Save type=" + typeExtension + "\nWould you like to change to the correct extention?");
    if (answer != 1) {
        return name;
    }
    return std::filesystem::path(name).replace_extension(typeExtension).string();
}

}  // namespace wib
