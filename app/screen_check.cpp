// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/screen_check.h"

#include <QGuiApplication>
#include <QScreen>
#include <cmath>
#include <sstream>

#include "core/host/log.h"
#include "core/host/prompter.h"

namespace wib {

namespace {

constexpr const char* kConflictTitle = "SCREEN SETTINGS CONFLICT";

std::string FormatNumber(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

}  // namespace

std::optional<std::string> ScreenConflictText(double dpi) {
    const long dots = std::lround(dpi);
    if (dots == 96) {
        return std::nullopt;
    }
    return "Your screen DPI is set to " + std::to_string(dots) +
           " instead of the standard 96.\nThis may result in window formatting errors.";
}

void CheckScreen(Log& log, Prompter& prompter) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (screen == nullptr) {
        return;
    }
    // Qt keeps the logical DPI near 96 and scales by the device pixel ratio
    // instead; the screen's setting is the two together.
    const double dpi = screen->logicalDotsPerInch() * screen->devicePixelRatio();
    log.line("DPI scale factor is " + FormatNumber(dpi / 96.0));
    if (const auto conflict = ScreenConflictText(dpi)) {
        log.line(kConflictTitle);
        log.line(*conflict);
        prompter.warningBox(*conflict, kConflictTitle);
    }
    const QRect desktop = screen->virtualGeometry();
    log.line("Virtual monitor size... left " + std::to_string(desktop.left()) + " top " +
             std::to_string(desktop.top()) + " right " + std::to_string(desktop.right() + 1) +
             " Bottom " + std::to_string(desktop.bottom() + 1));
}

}  // namespace wib
