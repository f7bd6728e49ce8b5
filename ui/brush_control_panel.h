// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDockWidget>
#include <functional>
#include <vector>

class QFormLayout;
class QWidget;

namespace wib {

class PaintSession;
struct BrushControl;

// A panel of brush controls built from the control table: one widget per
// control, named as the table names it, each change written to the options
// model and followed by the session's change handlers. The panel shows the
// model again whenever it changes elsewhere (a settings file, a command).
class BrushControlPanel : public QDockWidget {
    Q_OBJECT
  public:
    BrushControlPanel(const char* panelName, const QString& title, PaintSession& session,
                      QWidget* parent = nullptr);
    // Reads every control back from the model without running handlers.
    virtual void showModel();

  protected:
    PaintSession& session() { return session_; }
    QFormLayout* form() { return form_; }

  private:
    void addControl(const BrushControl& control);
    void changed(const BrushControl& control, int value);

    PaintSession& session_;
    QFormLayout* form_;
    std::vector<std::function<void()>> readers_;
    bool showing_ = false;
};

// The brush panel: shape, dynamics, colour variation, spacing, symmetry,
// paint mode, and the brush-type buttons.
class BrushOptions : public BrushControlPanel {
    Q_OBJECT
  public:
    BrushOptions(PaintSession& session, QWidget* parent = nullptr);
    void showModel() override;

  private:
    std::vector<QWidget*> typeButtons_;
    QWidget* preview_;
};

// The paper panel: which grain, and how it lies under the paint.
class Paper_Panel : public BrushControlPanel {
    Q_OBJECT
  public:
    Paper_Panel(PaintSession& session, QWidget* parent = nullptr);
};

}  // namespace wib
