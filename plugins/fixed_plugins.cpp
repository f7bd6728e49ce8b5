// SPDX-License-Identifier: GPL-3.0-or-later
#include "plugins/fixed_plugins.h"

#include <array>

namespace wib {

namespace {

constexpr const char* kEffects = "Filter/Plug-in effects";
constexpr const char* kTools = "Plug-ins/Tools";
constexpr const char* kWidgets = "Plug-ins/Widgets";
constexpr WindowStyle kTool = WindowStyle::TakesFocus;
constexpr WindowStyle kWidget = WindowStyle::KeepsProgramFocus;

constexpr std::array kFixedPlugins = {
    FixedPlugin{"filmgrain", "Film &grain...", kEffects, "Filmgrain_pf.exe", kTool},
    FixedPlugin{"confetti", "&Confetti...", kEffects, "Confetti_pf.exe", kTool},
    FixedPlugin{"optimized_palette", "&Optimized palette...", kEffects, "OptimizedPalette_pf.exe",
                kTool},
    FixedPlugin{"animated_flares", "Animated &flares...", kEffects, "Animated_Flares_pf.exe",
                kTool},
    FixedPlugin{"multi_frame_spherize", "Multi-frame &spherize...", kEffects,
                "MultiFrameSpherize_pf.exe", kTool},
    FixedPlugin{"bmp", "Import &BMP...", kTools, "BMP_pi.exe", kTool},
    FixedPlugin{"matte_cutter", "&Matte cutter...", kTools, "MatteCutter_pm.exe", kTool},
    FixedPlugin{"force_field", "&Force field...", kTools, "ForceField_pm.exe", kTool},
    FixedPlugin{"fx_brush", "Fx &brush", kTools, "Fx_brush_pb.exe", kTool},
    FixedPlugin{"array_to_animation", "&Array to animation...", kTools, "ArrayToAnimation_pm.exe",
                kTool},
    FixedPlugin{"clock", "&Clock", kWidgets, "Clock2_pm.exe", kWidget},
    FixedPlugin{"audio_recorder", "&Audio recorder", kWidgets, "Audio Recorder_pm.exe", kWidget},
    FixedPlugin{"media_player", "&Media player", kWidgets, "MediaPlayerWidget_pm.exe", kWidget},
    FixedPlugin{"calendar", "C&alendar", kWidgets, "CalendarWidget_pm.exe", kWidget},
};

}  // namespace

std::span<const FixedPlugin> FixedPlugins() {
    return kFixedPlugins;
}

}  // namespace wib
