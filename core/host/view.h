// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "core/observer_list.h"

namespace wib {

// What the document asks of the windows that show it. The main frame
// implements it; headless mode and tests use their own.
class View {
  public:
    virtual ~View() = default;

    // Redraws the canvas from the main buffer.
    virtual void refresh() = 0;
    // Redraws only the image pixels left..right, top..bottom (inclusive), as
    // painting does after each dab.
    virtual void refreshArea(int left, int top, int right, int bottom) = 0;
    // Redraws every view the refresh flags allow (canvas, title, panels).
    virtual void completeRefresh() = 0;
    // The document planes were rebuilt at a new size.
    virtual void documentResized() = 0;
    // The view state's zoom, rotation or mirror changed: the canvas lays
    // itself out again around the image point at the middle of the window.
    virtual void viewChanged() {}
    // Lets pending interface events run (input, paints).
    virtual void processPendingEvents() = 0;
    // Enables or disables input to the canvas window alone.
    virtual void setCanvasEnabled(bool enabled) = 0;
    // Enables or disables the whole main frame: menus, panels and canvas.
    virtual void setMainFrameEnabled(bool enabled) = 0;
    // The canvas's pointer shape changed (0 the arrow, 11 the busy pointer).
    virtual void pointerShapeChanged(int shape) { static_cast<void>(shape); }
    // The system's ids of the canvas window and of the main frame, for a
    // plug-in to parent its own windows to; 0 where there is no window.
    virtual long long canvasWindowId() { return 0; }
    virtual long long mainWindowId() { return 0; }
    // Shows the image file as the main frame's title-bar icon (empty: the
    // program's own icon again); false when the file holds no image or there
    // is no window.
    virtual bool setTitleBarImage(const std::string& path) {
        static_cast<void>(path);
        return false;
    }
};

// Passes every request on to each attached view, in the order they attached;
// with none attached requests are dropped: the document is built before the
// windows that show it.
class ViewList : public View {
  public:
    [[nodiscard]] Subscription attach(View& view) {
        views_->push_back(&view);
        std::weak_ptr<std::vector<View*>> weak = views_;
        return Subscription([weak, target = &view] {
            if (const auto views = weak.lock()) {
                std::erase(*views, target);
            }
        });
    }

    void refresh() override { each(&View::refresh); }
    void refreshArea(int left, int top, int right, int bottom) override {
        for (View* view : snapshot()) {
            view->refreshArea(left, top, right, bottom);
        }
    }
    void completeRefresh() override { each(&View::completeRefresh); }
    void documentResized() override { each(&View::documentResized); }
    void viewChanged() override { each(&View::viewChanged); }
    void processPendingEvents() override { each(&View::processPendingEvents); }
    void setCanvasEnabled(bool enabled) override { each(&View::setCanvasEnabled, enabled); }
    void setMainFrameEnabled(bool enabled) override { each(&View::setMainFrameEnabled, enabled); }
    void pointerShapeChanged(int shape) override { each(&View::pointerShapeChanged, shape); }
    long long canvasWindowId() override { return first(&View::canvasWindowId); }
    long long mainWindowId() override { return first(&View::mainWindowId); }
    bool setTitleBarImage(const std::string& path) override {
        bool shown = false;
        for (View* view : snapshot()) {
            shown = view->setTitleBarImage(path) || shown;
        }
        return shown;
    }

  private:
    // A view may detach while told, so walk a copy.
    std::vector<View*> snapshot() const { return *views_; }
    template <typename... Params, typename... Args>
    void each(void (View::*request)(Params...), Args... args) {
        for (View* view : snapshot()) {
            (view->*request)(args...);
        }
    }

    // The first view's answer that is not 0.
    long long first(long long (View::*ask)()) const {
        for (View* view : snapshot()) {
            if (const long long id = (view->*ask)()) {
                return id;
            }
        }
        return 0;
    }

    std::shared_ptr<std::vector<View*>> views_ = std::make_shared<std::vector<View*>>();
};

}  // namespace wib
