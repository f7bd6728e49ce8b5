// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

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
// Wib_Connect with the token. Calls run one at a time on the thread that owns
// the server, each connection's in arrival order, the connections taking
// turns one call each so that one that floods cannot starve the others. A
// connection that sends a malformed or oversized message is dropped; one
// whose answers pile up unread is not read from until they drain; one that
// closes while holding the interface or buffer lock or the status window has
// them given back. `host` and everything it refers to must outlive the server.
class AutomationServer : public QObject {
    Q_OBJECT

  public:
    // Connections open at once; more are closed as soon as they are accepted.
    static constexpr std::size_t kMaxConnections = 64;

    explicit AutomationServer(AutomationHost& host, QObject* parent = nullptr);
    ~AutomationServer() override;

    // Listens on `name` (a bare name or a full socket path), for connections
    // of the same user only: the socket is readable and writable by its owner
    // alone. A stale socket of that name is removed first.
    bool listen(const QString& name, const QString& token);
    // What plug-ins are given in WIBBLETON_SERVER: the socket's full path.
    QString fullServerName() const;
    QString errorString() const;
    // Stops listening and closes every connection, giving back what they hold.
    void close();

    // Answer bytes that connections have not read yet, all together.
    std::size_t unsentBytes() const;
    std::size_t connectionCount() const { return connections_.size(); }

  private:
    void accept(int descriptor);
    void wake(PluginConnection& connection);
    void serve();
    void serveOne(PluginConnection& connection);
    bool greet(PluginConnection& connection, const Envelope& envelope);
    void drop(PluginConnection& connection, const std::string& reason);
    void run(PluginConnection& connection, QueuedCall& call);
    bool throttled(const PluginConnection& connection) const;
    void releaseClosed();
    void release(PluginConnection& connection);

    AutomationHost& host_;
    ServerState state_;
    QLocalServer* server_;
    std::vector<std::unique_ptr<PluginConnection>> connections_;
    bool busy_ = false;         // a call is running; calls that arrive meanwhile wait their turn
    bool servePosted_ = false;  // another round of calls is due from the event loop
};

}  // namespace wib
