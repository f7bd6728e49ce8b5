#pragma once

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
    // Lets pending interface events run (input, paints).
    virtual void processPendingEvents() = 0;
    // Enables or disables input to the canvas window alone.
    virtual void setCanvasEnabled(bool enabled) = 0;
    // Enables or disables the whole main frame: menus, panels and canvas.
    virtual void setMainFrameEnabled(bool enabled) = 0;
};

}  // namespace wib

namespace wib {

// Passes every request on to a view attached later, and drops them while none
// is: the document is built before the window that shows it.
class ViewRelay : public View {
  public:
    void attach(View* target) { target_ = target; }

    void refresh() override {
        if (target_)
            target_->refresh();
    }
    void refreshArea(int left, int top, int right, int bottom) override {
        if (target_)
            target_->refreshArea(left, top, right, bottom);
    }
    void completeRefresh() override {
        if (target_)
            target_->completeRefresh();
    }
    void documentResized() override {
        if (target_)
            target_->documentResized();
    }
    void processPendingEvents() override {
        if (target_)
            target_->processPendingEvents();
    }
    void setCanvasEnabled(bool enabled) override {
        if (target_)
            target_->setCanvasEnabled(enabled);
    }
    void setMainFrameEnabled(bool enabled) override {
        if (target_)
            target_->setMainFrameEnabled(enabled);
    }

  private:
    View* target_ = nullptr;
};

}  // namespace wib
