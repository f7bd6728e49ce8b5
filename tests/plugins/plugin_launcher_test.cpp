// SPDX-License-Identifier: GPL-3.0-or-later
#include <signal.h>
#include <sys/stat.h>

#include <gtest/gtest.h>

#include "tests/support/qt_wait.h"

#include <QCoreApplication>
#include <QDeadlineTimer>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "plugins/plugin_launcher.h"

namespace wib {
namespace {

namespace fs = std::filesystem;

class PluginLauncherTest : public ::testing::Test {
  protected:
    void SetUp() override {
        folder = fs::temp_directory_path() /
                 ("wib-launch-" + std::to_string(::getpid()) + "-" +
                  ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(folder);
        fs::create_directories(folder);
        launcher.setServer("/tmp/some-server", "secret-token");
    }
    void TearDown() override {
        launcher.shutDown();
        fs::remove_all(folder);
    }

    fs::path script(const std::string& name, const std::string& body) {
        const fs::path file = folder / name;
        std::ofstream(file) << "#!/bin/sh\n" << body;
        ::chmod(file.c_str(), 0755);
        return file;
    }

    static std::string Read(const fs::path& file) {
        std::ifstream in(file);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }

    // Runs the event loop until `done` holds; false after ten seconds.

    fs::path folder;
    PluginLauncher launcher;
};

TEST_F(PluginLauncherTest, StartsTheFileInItsFolderWithServerAndToken) {
    const fs::path file = script("Env_pf.exe",
                                 "echo \"$WIBBLETON_SERVER $WIBBLETON_TOKEN "
                                 "$WIBBLETON_WINDOW_STYLE $(pwd)\" > seen.txt\nexit 3\n");
    std::vector<WindowStyle> told;
    const Subscription started =
        launcher.started.subscribe([&told](WindowStyle style) { told.push_back(style); });
    const long long pid = launcher.start(file, WindowStyle::KeepsProgramFocus);
    EXPECT_GT(pid, 0);
    EXPECT_EQ(told, std::vector<WindowStyle>{WindowStyle::KeepsProgramFocus});
    ASSERT_EQ(launcher.children().size(), 1u);
    EXPECT_EQ(launcher.children()[0].pid, pid);
    EXPECT_EQ(launcher.children()[0].name, "Env_pf.exe");
    ASSERT_TRUE(testing::PumpUntil(
        [&] { return launcher.children()[0].state == ChildPlugin::State::Ended; }));
    EXPECT_EQ(launcher.children()[0].exitCode, 3);
    EXPECT_FALSE(launcher.children()[0].crashed);
    EXPECT_EQ(Read(folder / "seen.txt"),
              "/tmp/some-server secret-token 4 " + fs::canonical(folder).string() + "\n");
}

TEST_F(PluginLauncherTest, RelativePathStartsTheFileFromTheProgramsFolder) {
    script("Here_pf.exe", "pwd > here.txt\n");
    const long long pid =
        launcher.start(fs::relative(folder) / "Here_pf.exe", WindowStyle::TakesFocus);
    EXPECT_GT(pid, 0);
    ASSERT_TRUE(testing::PumpUntil(
        [&] { return launcher.children()[0].state == ChildPlugin::State::Ended; }));
    EXPECT_EQ(Read(folder / "here.txt"), fs::canonical(folder).string() + "\n");
}

TEST_F(PluginLauncherTest, UnstartableFilesAnswerZeroAndStayOnTheList) {
    std::ofstream(folder / "Plain_pf.exe") << "not a program\n";  // not executable
    const fs::path badInterpreter = script("Bad_pf.exe", "");
    std::ofstream(badInterpreter) << "#!/nonexistent/interpreter\n";
    bool told = false;
    const Subscription started = launcher.started.subscribe([&told](WindowStyle) { told = true; });
    EXPECT_EQ(launcher.start(folder / "Plain_pf.exe", WindowStyle::TakesFocus), 0);
    EXPECT_EQ(launcher.start(badInterpreter, WindowStyle::TakesFocus), 0);
    EXPECT_EQ(launcher.start(folder / "Missing_pf.exe", WindowStyle::TakesFocus), 0);
    ASSERT_EQ(launcher.children().size(), 3u);
    for (const ChildPlugin& child : launcher.children()) {
        EXPECT_EQ(child.state, ChildPlugin::State::NotStarted);
        EXPECT_EQ(child.pid, 0);
    }
    EXPECT_FALSE(told);
}

TEST_F(PluginLauncherTest, ShutDownTerminatesThenKillsAChildThatIgnoresIt) {
    const fs::path obeys = script("Obeys_pm.exe", "echo ready > obeys.txt\nexec sleep 600\n");
    const fs::path stubborn =
        script("Stubborn_pm.exe",
               "trap 'echo term >> stubborn.txt' TERM\necho ready > stubborn.txt\n"
               "while :; do sleep 0.1; done\n");
    const long long obeysPid = launcher.start(obeys, WindowStyle::KeepsProgramFocus);
    const long long stubbornPid = launcher.start(stubborn, WindowStyle::KeepsProgramFocus);
    ASSERT_TRUE(testing::PumpUntil([&] {
        return Read(folder / "obeys.txt") == "ready\n" &&
               Read(folder / "stubborn.txt") == "ready\n";
    }));

    launcher.shutDown();
    for (const ChildPlugin& child : launcher.children()) {
        EXPECT_EQ(child.state, ChildPlugin::State::Ended) << child.name;
        EXPECT_TRUE(child.crashed) << child.name;
    }
    // The stubborn one heard SIGTERM and had to be killed; both are gone.
    EXPECT_EQ(Read(folder / "stubborn.txt"), "ready\nterm\n");
    EXPECT_NE(::kill(static_cast<pid_t>(obeysPid), 0), 0);
    EXPECT_NE(::kill(static_cast<pid_t>(stubbornPid), 0), 0);
}

TEST_F(PluginLauncherTest, StopEndsOneChild) {
    const fs::path file = script("Clock_pm.exe", "exec sleep 600\n");
    launcher.start(file, WindowStyle::KeepsProgramFocus);
    launcher.start(file, WindowStyle::KeepsProgramFocus);
    launcher.stop(0);
    ASSERT_TRUE(testing::PumpUntil(
        [&] { return launcher.children()[0].state == ChildPlugin::State::Ended; }));
    EXPECT_EQ(launcher.children()[1].state, ChildPlugin::State::Running);
}

}  // namespace
}  // namespace wib
