// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "plugins/automation_host.h"
#include "plugins/method_table.h"
#include "plugins/plugin_connection.h"

class QLocalServer;

namespace wib {

// Serves the automation object to plug-in processes over a local socket,
// speaking msgpack-RPC: requests [0, msgid, method, params] are answered with
// [1, msgid, error, result]. The first request of a connection must be
// Wib_Connect with the token; calls of all connections run one at a time, in
// arrival order, on the thread that owns the server. A connection that sends
// a malformed or oversized message is dropped; one that closes while holding
// the interface or buffer lock or the status window has them given back.
// `host` and everything it refers to must outlive the server.
class AutomationServer : public QObject {
    Q_OBJECT

  public:
    explicit AutomationServer(AutomationHost& host, QObject* parent = nullptr);
    ~AutomationServer() override;

    // Listens on `name` (a bare name or a full socket path), for connections
    // of the same user only; a stale socket of that name is removed first.
    bool listen(const QString& name, const QString& token);
    // What plug-ins are given in WIBBLETON_SERVER: the socket's full path.
    QString fullServerName() const;
    QString errorString() const;
    // Stops listening and closes every connection, giving back what they hold.
    void close();

  private:
    void accept();
    void read(const std::shared_ptr<PluginConnection>& connection);
    void takeMessages(const std::shared_ptr<PluginConnection>& connection);
    bool greet(PluginConnection& connection, const Envelope& envelope);
    void drop(PluginConnection& connection, const std::string& reason);
    void gone(const std::shared_ptr<PluginConnection>& connection);
    void drain();
    void run(QueuedCall& call);
    void release(PluginConnection& connection);

    AutomationHost& host_;
    ServerState state_;
    QLocalServer* server_;
    std::vector<std::shared_ptr<PluginConnection>> connections_;
    std::deque<QueuedCall> queue_;
    bool busy_ = false;  // a call is running; calls that arrive meanwhile wait their turn
};

}  // namespace wib
