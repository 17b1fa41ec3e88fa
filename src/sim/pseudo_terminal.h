#pragma once

#include "line_format.h"

#include <QByteArray>
#include <QObject>
#include <QString>

#include <optional>

class QSocketNotifier;

namespace velmor::sim {

// A pseudo-terminal whose slave side (devicePath) a program opens as its
// serial port; its master side is read and written here without blocking.
// The slave stays open here too, so that the program may close and reopen
// its port between exchanges without the master seeing a hang-up.
class PseudoTerminal : public QObject {
    Q_OBJECT
public:
    explicit PseudoTerminal(QObject* parent = nullptr);
    ~PseudoTerminal() override;

    // Creates the pseudo-terminal, raw; false with a message when the system refuses.
    bool open(QString* error);
    bool isOpen() const { return master_ >= 0; }
    QString devicePath() const { return devicePath_; }
    // The settings the program (or a serial server in front of it) has set on
    // the slave side; empty while closed.
    std::optional<LineFormat> lineFormat() const;

    // Everything the program has written that was not read yet.
    QByteArray readAll();
    // A real line keeps nothing: what the pseudo-terminal cannot take is lost.
    void write(const QByteArray& bytes);
    // Closes both ends now: the program's open port sees the far end disappear.
    void close();

signals:
    void readyRead();

private:
    int master_ = -1;
    int slave_ = -1;
    QSocketNotifier* notifier_ = nullptr;
    QString devicePath_;
};

}  // namespace velmor::sim
