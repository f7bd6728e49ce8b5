#pragma once

#include <cstdint>
#include <optional>

#include "core/plane.h"

namespace wib {

class Workspace;
struct Document;

inline constexpr const char* kPluginBufferSizeFault =
    "Plugin fault.  Cannot set buffer because buffer size has changed.";

// Per-pixel access to the main buffer. Coordinates are not clipped: outside
// the planes they throw SubscriptError.
std::uint8_t Wib_GetR(const Document& doc, int x, int y);
std::uint8_t Wib_GetG(const Document& doc, int x, int y);
std::uint8_t Wib_GetB(const Document& doc, int x, int y);
// R + 256 * G + 65536 * B.
std::int32_t Wib_GetRGB(const Document& doc, int x, int y);
void Wib_SetRGB(Document& doc, int x, int y, std::uint8_t r, std::uint8_t g, std::uint8_t b);

// Copies of whole planes.
Plane Wib_GetRBuffer(const Document& doc);
Plane Wib_GetGBuffer(const Document& doc);
Plane Wib_GetBBuffer(const Document& doc);
Plane Wib_GetABuffer(const Document& doc);
Plane Wib_GetSwapRBuffer(const Document& doc);
Plane Wib_GetSwapGBuffer(const Document& doc);
Plane Wib_GetSwapBBuffer(const Document& doc);
// A copy of a brush plane, or nothing while no custom brush is active (the
// automation API answers -1 then).
std::optional<Plane> Wib_GetBrushRBuffer(const Document& doc);
std::optional<Plane> Wib_GetBrushGBuffer(const Document& doc);
std::optional<Plane> Wib_GetBrushBBuffer(const Document& doc);
std::optional<Plane> Wib_GetBrushABuffer(const Document& doc);

// Whole-plane setters take the array over without copying, but only when both
// of its upper bounds equal the current plane's; otherwise nothing changes.
// Only the red setter tells the user about a mismatch. Each returns whether the
// plane was taken.
bool Wib_SetRbuffer(Workspace& workspace, Plane&& plane);
bool Wib_SetGBuffer(Document& doc, Plane&& plane);
bool Wib_SetBBuffer(Document& doc, Plane&& plane);
bool Wib_SetABuffer(Document& doc, Plane&& plane);
bool Wib_SetSwapRBuffer(Document& doc, Plane&& plane);
bool Wib_SetSwapGBuffer(Document& doc, Plane&& plane);
bool Wib_SetSwapBBuffer(Document& doc, Plane&& plane);

int Wib_BufferWidth(const Document& doc);
int Wib_BufferHeight(const Document& doc);
std::uint8_t Wib_GetAlphabits(const Document& doc);

// Fills every pixel of the main planes with the colour.
void Wib_ClearBuffer(Document& doc, std::uint8_t r, std::uint8_t g, std::uint8_t b);

// The lock counter has no floor; only Wib_HardUnlock resets it.
void Wib_Lock(Document& doc);
void Wib_Unlock(Document& doc);
void Wib_HardUnlock(Document& doc);
// The canvas window alone, and the whole main frame.
void Wib_LockBuffer(Workspace& workspace);
void Wib_UnlockBuffer(Workspace& workspace);
void Wib_LockInterface(Workspace& workspace);
void Wib_UnlockInterface(Workspace& workspace);

// Refresh flags take the program's boolean: -1 is true, anything else false.
void Wib_SimpleRefresh(Document& doc, int flag);
void Wib_NoRefresh(Document& doc, int flag);
void Wib_RefreshTitleOnly(Document& doc, int flag);
void Wib_Refresh(Workspace& workspace);
void Wib_CompleteRefresh(Workspace& workspace);

}  // namespace wib
