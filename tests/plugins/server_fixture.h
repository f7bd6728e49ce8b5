// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QString>

#include <memory>

#include "core/commands.h"
#include "core/document_commands.h"
#include "plugins/automation_server.h"
#include "tests/plugins/map_controls.h"
#include "tests/plugins/program_parts.h"
#include "tests/plugins/raw_client.h"
#include "tests/support/test_host.h"

namespace wib::testing {

inline constexpr const char* kToken = "test-token-1234";

// The automation server over a TestHost workspace (an 8 x 6 document) and the
// document commands, listening on a socket of its own.
class ServerFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        host.newDocument(8, 6);
        RegisterDocumentCommands(commands);
        const QString name = QString("wib-automation-test-%1-%2")
                                 .arg(QCoreApplication::applicationPid())
                                 .arg(++serial_);
        ASSERT_TRUE(server.listen(name, kToken)) << server.errorString().toStdString();
    }

    // A client that has passed Wib_Connect.
    std::unique_ptr<RawClient> connectedClient() {
        auto client = std::make_unique<RawClient>(server.fullServerName());
        const Response answer = client->call("Wib_Connect", Params(std::string(kToken)));
        EXPECT_EQ(answer.errorCode, 0);
        return client;
    }

    bool logHas(const std::string& text) const {
        for (const std::string& line : host.log.lines) {
            if (line.find(text) != std::string::npos) {
                return true;
            }
        }
        return false;
    }

    TestHost host;
    CommandRegistry commands;
    MapControls controls;
    ProgramParts parts{host.workspace};
    AutomationHost automation{host.workspace, commands,    controls,    "/opt/wibbleton", "/tmp", 2,
                              parts.paint,    parts.files, parts.frames};
    AutomationServer server{automation};

  private:
    static inline int serial_ = 0;
};

}  // namespace wib::testing
