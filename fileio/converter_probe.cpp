// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/converter_probe.h"

#include <array>
#include <sstream>
#include <vector>

#include "core/host/process_runner.h"
#include "core/workspace.h"
#include "fileio/byte_sink.h"
#include "fileio/byte_source.h"
#include "fileio/converter_command.h"
#include "fileio/targa_header.h"
#include "fileio/targa_writer.h"

namespace wib {

namespace {

constexpr std::chrono::seconds kProbeLimit{10};
constexpr std::chrono::milliseconds kProbePoll{10};

// The two pixels of the probe image: red above blue.
constexpr std::array<std::uint8_t, 3> kTop{255, 0, 0};
constexpr std::array<std::uint8_t, 3> kBottom{0, 0, 255};

bool RunToEnd(Workspace& workspace, ProcessRunner& processes, const std::string& commandLine) {
    const auto id = processes.start(commandLine);
    if (!id) {
        return false;
    }
    Clock& clock = workspace.host.clock;
    const auto start = clock.now();
    while (processes.running(*id)) {
        if (clock.now() - start > kProbeLimit) {
            return false;
        }
        clock.sleepFor(kProbePoll);
    }
    return true;
}

bool WritePpm(const std::filesystem::path& path) {
    FileSink sink(path.string());
    const std::string header = "P6\n1 2\n255\n";
    return sink.isOpen() &&
           sink.write({reinterpret_cast<const std::uint8_t*>(header.data()), header.size()}) &&
           sink.write(kTop) && sink.write(kBottom) && sink.close();
}

bool WriteProbeTarga(const std::filesystem::path& path) {
    Plane red(0, 1), green(0, 1), blue(0, 1);
    const Plane alpha(0, 1, 255);
    for (int y = 0; y < 2; ++y) {
        const auto& pixel = y == 0 ? kTop : kBottom;
        red.at(0, y) = pixel[0];
        green.at(0, y) = pixel[1];
        blue.at(0, y) = pixel[2];
    }
    FileSink sink(path.string());
    return sink.isOpen() &&
           EncodeTarga({red, green, blue, alpha}, 1, 2, kTargaFormat24, TargaRowOrder::BottomFirst,
                       sink) &&
           sink.close();
}

// Whether the first pixel stored in a Targa is the top one, and its descriptor.
std::optional<std::pair<bool, std::uint8_t>> TargaStartsAtTop(const std::filesystem::path& path) {
    std::vector<std::uint8_t> bytes;
    if (!ReadWholeFile(path.string(), bytes) || bytes.size() < kTargaHeaderSize) {
        return std::nullopt;
    }
    const TargaHeader header =
        ParseTargaHeader(std::span<const std::uint8_t>(bytes).first<kTargaHeaderSize>());
    const std::size_t pixel = kTargaHeaderSize + header.idLength;
    if (header.imageType != kTargaTrueColor || bytes.size() < pixel + 3) {
        return std::nullopt;
    }
    return std::make_pair(bytes[pixel + 2] == kTop[0] && bytes[pixel] == kTop[2],
                          header.descriptor);
}

// Whether the first pixel of a binary PPM is the top one of the probe image.
std::optional<bool> PpmStartsWithTop(const std::filesystem::path& path) {
    std::vector<std::uint8_t> bytes;
    if (!ReadWholeFile(path.string(), bytes)) {
        return std::nullopt;
    }
    std::istringstream text(std::string(bytes.begin(), bytes.end()));
    std::string magic;
    int width = 0, height = 0, maximum = 0;
    text >> magic >> width >> height >> maximum;
    const auto data = static_cast<std::size_t>(text.tellg()) + 1;
    if (!text || magic != "P6" || maximum != 255 || bytes.size() < data + 3) {
        return std::nullopt;
    }
    return bytes[data] == kTop[0] && bytes[data + 2] == kTop[2];
}

}  // namespace

std::optional<ConverterTargaRows> ProbeConverterTargaRows(Workspace& workspace,
                                                          ProcessRunner& processes,
                                                          const std::string& convert,
                                                          const std::filesystem::path& folder) {
    const auto ppmIn = folder / "WibProbeIn.ppm";
    const auto targaOut = folder / "WibProbeOut.tga";
    const auto targaIn = folder / "WibProbeIn.tga";
    const auto ppmOut = folder / "WibProbeOut.ppm";
    std::optional<ConverterTargaRows> rows;
    if (WritePpm(ppmIn) && WriteProbeTarga(targaIn) &&
        RunToEnd(workspace, processes,
                 ToTargaCommandLine(convert, ppmIn.string(), targaOut.string())) &&
        RunToEnd(workspace, processes,
                 convert + " " + Quoted(targaIn.string()) +
                     " -depth 8 PPM:" + Quoted(ppmOut.string()))) {
        const auto written = TargaStartsAtTop(targaOut);
        const auto read = PpmStartsWithTop(ppmOut);
        if (written && read) {
            const bool markedTop = (written->second & kTargaTopOrigin) != 0;
            rows = ConverterTargaRows{written->first && !markedTop, !*read};
        }
    }
    for (const auto& path : {ppmIn, targaOut, targaIn, ppmOut}) {
        std::error_code ignored;
        std::filesystem::remove(path, ignored);
    }
    return rows;
}

}  // namespace wib
