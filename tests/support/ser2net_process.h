#pragma once

#include <QList>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace velmor::testing {

// A real ser2net in a child process, serving lines on 127.0.0.1 from a
// configuration of its own in a temporary folder: each connection takes a
// free TCP port and leads to one device, raw or with telnet and RFC 2217.
class Ser2netProcess {
public:
    enum class Accepter { Raw, Rfc2217 };

    Ser2netProcess() = default;
    ~Ser2netProcess() { stop(); }
    Ser2netProcess(const Ser2netProcess&) = delete;
    Ser2netProcess& operator=(const Ser2netProcess&) = delete;

    // The installed ser2net, or empty.
    static QString executable();

    // Before start(): one more connection to `device`, the line set as
    // ser2net writes it ("4800n81", "9600e72"). Returns its index.
    int addConnection(Accepter accepter, const QString& device, const QString& lineSettings = QStringLiteral("4800n81"));
    // Writes the configuration, starts ser2net and waits until every
    // connection listens. False with error() otherwise.
    bool start(int timeoutMs = 5000);

    // The address of a connection as the program names it:
    // tcp://127.0.0.1:PORT or rfc2217://127.0.0.1:PORT.
    QString url(int index) const;
    quint16 port(int index) const { return connections_.at(index).port; }

    // SIGTERM without waiting: ser2net goes away while the test runs on.
    void terminate() { process_.terminate(); }
    // SIGTERM and a wait for the end; SIGKILL when it does not come.
    void stop(int timeoutMs = 3000);
    bool isRunning() const { return process_.state() != QProcess::NotRunning; }
    QString error() const { return error_; }

private:
    struct Connection {
        Accepter accepter;
        QString device;
        QString lineSettings;
        quint16 port = 0;
    };

    bool pickPorts();
    bool writeConfiguration(const QString& path) const;
    bool allListening() const;

    QTemporaryDir dir_;
    QProcess process_;
    QList<Connection> connections_;
    QString error_;
};

// A port on 127.0.0.1 on which nothing listens: a connection there is refused.
quint16 unusedLocalPort();

}  // namespace velmor::testing

// Tests that need ser2net skip, saying why, where it is not installed.
#define VELMOR_REQUIRE_SER2NET()                                                               \
    do {                                                                                       \
        if (velmor::testing::Ser2netProcess::executable().isEmpty())                           \
            QSKIP("ser2net is not installed (scripts/install-deps.sh installs it)");           \
    } while (false)
