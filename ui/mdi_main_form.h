// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QMainWindow>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "core/commands.h"
#include "core/host/view.h"
#include "core/observer_list.h"
#include "core/program_paths.h"
#include "ui/command_dialogs.h"
#include "ui/window_commands.h"

class QDockWidget;
class QMenu;
class QScrollArea;

namespace wib {

class BrushOptions;
class CanvasEvents;
class PluginCommands;
class PluginLauncher;
class RunningPlugins;
class SwapImageView;
class ColourWells;
class CommandRegistry;
class ErrorConsoleForm;
class Layers_panel;
class PaintSession;
class Paper_Panel;
class Form1;
class Tool_Panel;
class ToolOptionsPanel;
class Workspace;

// The main frame: canvas, tool panel, log window and the menus built from the
// command table. It answers the document's requests for redraws and locks.
class MDI_MainForm : public QMainWindow, public View {
    Q_OBJECT
  public:
    // With a paint session the canvas paints and the brush, paper and colour
    // panels are there.
    MDI_MainForm(Workspace& workspace, CommandRegistry& commands, ProgramPaths paths,
                 PaintSession* paint = nullptr, QWidget* parent = nullptr);
    ~MDI_MainForm() override;

    // View
    void refresh() override;
    void refreshArea(int left, int top, int right, int bottom) override;
    void completeRefresh() override;
    void documentResized() override;
    void viewChanged() override;
    void processPendingEvents() override;
    void setCanvasEnabled(bool enabled) override;
    void setMainFrameEnabled(bool enabled) override;
    void pointerShapeChanged(int shape) override;
    long long canvasWindowId() override;
    long long mainWindowId() override;
    bool setTitleBarImage(const std::string& path) override;

    ErrorConsoleForm* logWindow() const { return log_; }
    Tool_Panel* toolPanel() const { return tools_; }
    Layers_panel* layersPanel() const { return layers_; }
    Form1* canvas() const { return canvas_; }

    // Runs a command as its menu item does: its dialog first when it has
    // parameters, then the command; a refusal has already told the user.
    void runFromMenu(const std::string& id);

    // A hand-made dialog for a command instead of the generic one. The main
    // frame's dialogs serve every way a command is run, plug-ins' included.
    void setCommandDialog(const std::string& id, CommandDialog dialog);

    // What the main frame's own commands (zoom, log, exit, the plug-in
    // folder and list) do here.
    WindowActions windowActions();

    // The plug-ins: their folders and children for the Plug-ins menu, and the
    // canvas events a listening plug-in takes. Each must outlive the frame.
    void attachPlugins(PluginCommands& plugins, PluginLauncher& launcher, CanvasEvents& events);

    // Creates the tool panel and docks it as "ToolbarPlacement" (0 left,
    // 1 right, 2 top, 3 bottom) and "SingleColumnTools" (-1 one column) say.
    void createToolPanel();
    // Puts back the window layout saved at the last shut-down, and the layers
    // panel's height.
    void restoreWindowPos();

    // The title shows the size, zoom, unsaved changes and Caps Lock's erase mode.
    void updateTitle();
    // Caps Lock forces erase mode for drawing; read its state again.
    void updateEraseMode();

    void zoomIn();
    void zoomOut();
    void zoomActual();

    const std::vector<std::string>& recentFiles() const { return recent_; }
    void addRecentFile(const std::string& path);

    // Closing the window (Exit, Ctrl+Q, the close button) asks about unsaved
    // changes first. A termination signal closes it without asking: the
    // recovery snapshot keeps the work then.
    void closeWithoutQuestion() { closeWithoutQuestion_ = true; }
    // Told when the user closed the window after the question (not by a signal):
    // the work is saved or given up.
    ObserverList<> closedByUser;

    // The shut-down operations, run once, also when the program ends by signal.
    void shutDown();
    void KillTempAnims();
    void CloseStores();
    void SaveWindowPos();
    void SaveMRuds();

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void buildMenus();
    void menusChanged();
    void addEditMenuStates(QMenu* menu);
    void addViewMenuStates(QMenu* menu);
    void addWindowMenuStates(QMenu* menu);
    QDockWidget* dock(const QString& name) const;
    void toggleDock(const QString& name);
    void addPluginMenus(QMenu* menu);
    void openPluginFolder();
    void showRunningPlugins();
    void showSwapImage();
    void rebuildRecentMenu();
    void setZoom(int percent);
    void restoreLayersHeight();
    void redraw(bool complete);

    Workspace& workspace_;
    CommandRegistry& commands_;
    ProgramPaths paths_;
    QScrollArea* scroll_;
    Form1* canvas_;
    ErrorConsoleForm* log_;
    Layers_panel* layers_;
    Tool_Panel* tools_ = nullptr;
    ToolOptionsPanel* toolOptions_ = nullptr;
    QDockWidget* fillSettings_ = nullptr;
    PaintSession* paint_ = nullptr;
    BrushOptions* brushPanel_ = nullptr;
    Paper_Panel* paperPanel_ = nullptr;
    ColourWells* wells_ = nullptr;
    QMenu* recentMenu_ = nullptr;
    std::vector<std::string> recent_;
    CommandDialogs dialogs_;
    Subscription commandsSubscription_;
    bool menusPending_ = false;
    bool shutDown_ = false;
    bool closeWithoutQuestion_ = false;
    Subscription paintSubscription_;
    Subscription layersSubscription_;
    Subscription marqueeSubscription_;
    Subscription titleSubscriptions_[2];
    PluginCommands* plugins_ = nullptr;
    PluginLauncher* launcher_ = nullptr;
    CanvasEvents* canvasEvents_ = nullptr;
    RunningPlugins* runningPlugins_ = nullptr;
    SwapImageView* swapImage_ = nullptr;
};

}  // namespace wib
