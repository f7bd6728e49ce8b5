#include "core/buffer_access.h"

#include "core/workspace.h"

namespace wib {

namespace {

constexpr int kTrue = -1;

bool TakePlane(Plane& target, Plane&& incoming) {
    if (!target.sameShape(incoming)) {
        return false;
    }
    target = std::move(incoming);
    return true;
}

std::optional<Plane> BrushPlane(const Document& doc, const Plane& plane) {
    if (!doc.CustomBrushActive) {
        return std::nullopt;
    }
    return plane;
}

}  // namespace

std::uint8_t Wib_GetR(const Document& doc, int x, int y) {
    return doc.RBuffer.at(x, y);
}
std::uint8_t Wib_GetG(const Document& doc, int x, int y) {
    return doc.GBuffer.at(x, y);
}
std::uint8_t Wib_GetB(const Document& doc, int x, int y) {
    return doc.BBuffer.at(x, y);
}

std::int32_t Wib_GetRGB(const Document& doc, int x, int y) {
    return doc.RBuffer.at(x, y) + 256 * doc.GBuffer.at(x, y) + 65536 * doc.BBuffer.at(x, y);
}

void Wib_SetRGB(Document& doc, int x, int y, std::uint8_t r, std::uint8_t g, std::uint8_t b) {
    // Check all three before writing any, so a bad call changes nothing.
    std::uint8_t& red = doc.RBuffer.at(x, y);
    std::uint8_t& green = doc.GBuffer.at(x, y);
    std::uint8_t& blue = doc.BBuffer.at(x, y);
    red = r;
    green = g;
    blue = b;
}

Plane Wib_GetRBuffer(const Document& doc) {
    return doc.RBuffer;
}
Plane Wib_GetGBuffer(const Document& doc) {
    return doc.GBuffer;
}
Plane Wib_GetBBuffer(const Document& doc) {
    return doc.BBuffer;
}
Plane Wib_GetABuffer(const Document& doc) {
    return doc.ABuffer;
}
Plane Wib_GetSwapRBuffer(const Document& doc) {
    return doc.SwapR;
}
Plane Wib_GetSwapGBuffer(const Document& doc) {
    return doc.SwapG;
}
Plane Wib_GetSwapBBuffer(const Document& doc) {
    return doc.SwapB;
}

std::optional<Plane> Wib_GetBrushRBuffer(const Document& doc) {
    return BrushPlane(doc, doc.BrushR);
}
std::optional<Plane> Wib_GetBrushGBuffer(const Document& doc) {
    return BrushPlane(doc, doc.BrushG);
}
std::optional<Plane> Wib_GetBrushBBuffer(const Document& doc) {
    return BrushPlane(doc, doc.BrushB);
}
std::optional<Plane> Wib_GetBrushABuffer(const Document& doc) {
    return BrushPlane(doc, doc.BrushA);
}

bool Wib_SetRbuffer(Workspace& workspace, Plane&& plane) {
    if (!TakePlane(workspace.document.RBuffer, std::move(plane))) {
        workspace.host.prompter.message(kPluginBufferSizeFault);
        return false;
    }
    return true;
}

bool Wib_SetGBuffer(Document& doc, Plane&& plane) {
    return TakePlane(doc.GBuffer, std::move(plane));
}
bool Wib_SetBBuffer(Document& doc, Plane&& plane) {
    return TakePlane(doc.BBuffer, std::move(plane));
}

bool Wib_SetABuffer(Document& doc, Plane&& plane) {
    if (!TakePlane(doc.ABuffer, std::move(plane))) {
        return false;
    }
    doc.SelectionBounds = ComputeAlphaBounds(doc.ABuffer, doc.width, doc.height);
    return true;
}

bool Wib_SetSwapRBuffer(Document& doc, Plane&& plane) {
    return TakePlane(doc.SwapR, std::move(plane));
}
bool Wib_SetSwapGBuffer(Document& doc, Plane&& plane) {
    return TakePlane(doc.SwapG, std::move(plane));
}
bool Wib_SetSwapBBuffer(Document& doc, Plane&& plane) {
    return TakePlane(doc.SwapB, std::move(plane));
}

int Wib_BufferWidth(const Document& doc) {
    return doc.width;
}
int Wib_BufferHeight(const Document& doc) {
    return doc.height;
}
std::uint8_t Wib_GetAlphabits(const Document& doc) {
    return doc.AlphaBitsFlag;
}

void Wib_ClearBuffer(Document& doc, std::uint8_t r, std::uint8_t g, std::uint8_t b) {
    doc.RBuffer.fill(r);
    doc.GBuffer.fill(g);
    doc.BBuffer.fill(b);
}

void Wib_Lock(Document& doc) {
    ++doc.InterfaceLockCount;
}
void Wib_Unlock(Document& doc) {
    --doc.InterfaceLockCount;
}
void Wib_HardUnlock(Document& doc) {
    doc.InterfaceLockCount = 0;
}

void Wib_LockBuffer(Workspace& workspace) {
    workspace.document.CanvasEnabled = false;
    workspace.host.view.setCanvasEnabled(false);
}

void Wib_UnlockBuffer(Workspace& workspace) {
    workspace.document.CanvasEnabled = true;
    workspace.host.view.setCanvasEnabled(true);
}

void Wib_LockInterface(Workspace& workspace) {
    workspace.document.MainFrameEnabled = false;
    workspace.host.view.setMainFrameEnabled(false);
}

void Wib_UnlockInterface(Workspace& workspace) {
    workspace.document.MainFrameEnabled = true;
    workspace.host.view.setMainFrameEnabled(true);
}

void Wib_SimpleRefresh(Document& doc, int flag) {
    doc.SimpleRefreshFlag = flag == kTrue ? 255 : 0;
}
void Wib_NoRefresh(Document& doc, int flag) {
    doc.NoRefreshFlag = flag == kTrue ? -1 : 0;
}
void Wib_RefreshTitleOnly(Document& doc, int flag) {
    doc.TitleOnlyRefreshFlag = flag == kTrue ? 255 : 0;
}

void Wib_Refresh(Workspace& workspace) {
    workspace.host.view.refresh();
}

void Wib_CompleteRefresh(Workspace& workspace) {
    workspace.host.view.processPendingEvents();
    workspace.host.view.completeRefresh();
}

}  // namespace wib
