#include <QApplication>

#include "app/system_host.h"
#include "core/document_build.h"
#include "core/workspace.h"
#include "ui/host/dialog_prompter.h"
#include "ui/host/qt_preferences.h"
#include "ui/main_form.h"

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setOrganizationName("Wibbleton");
    QApplication::setApplicationName("Wibbleton");

    wib::DialogPrompter prompter;
    wib::QtPreferences preferences;
    wib::SteadyClock clock;
    wib::ViewRelay view;
    wib::MachineInfo machine;
    wib::StandardErrorLog log;
    wib::Workspace workspace(wib::HostServices{prompter, preferences, clock, view, machine, log});

    wib::Wib_NewBuffer(workspace, 640, 480);

    wib::MainForm mainForm(workspace);
    prompter.setParent(&mainForm);
    view.attach(&mainForm);
    mainForm.show();
    const int result = QApplication::exec();
    view.attach(nullptr);
    return result;
}
