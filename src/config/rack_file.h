#pragma once

#include "model/module_table.h"
#include "texts/language.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QStringList>

#include <optional>

namespace velmor {

// One module of a rack: where it answers and what it holds.
struct RackModule {
    QString line;      // as the lines were given
    int address = 0;
    QString model;
    int moduleNumber = 0;
    QByteArray image;  // the record's stored bytes

    bool operator==(const RackModule&) const = default;
};

// A rack: every module on every line at one time, as NAME.velrack keeps it.
struct Rack {
    QDateTime time;    // UTC
    QString version;   // the program's
    QStringList lines;
    QList<RackModule> modules;

    bool operator==(const Rack&) const = default;
};

inline constexpr int kRackFormatVersion = 1;

// The rack as one JSON document: its format and version, the time, the
// program's version, the lines, and each module with its image in base64
// and the image's SHA-256.
QByteArray rackJson(const Rack& rack);

// The rack that `bytes` hold, every field checked: nothing, and in `error`
// the first fault named after `name` in `language`, for a document that is
// damaged or foreign (not JSON, another format or format version, a field
// missing or of the wrong kind, an image that is not a module's record or
// does not match its SHA-256, a line and address named twice). A rack is
// taken whole or not at all.
std::optional<Rack> rackFromJson(const QByteArray& bytes, const QString& name, Language language, QString* error);

// Written whole or not at all; the system's reason, or nothing.
[[nodiscard]] QString writeRackFile(const QString& path, const Rack& rack);
std::optional<Rack> readRackFile(const QString& path, Language language, QString* error);

}  // namespace velmor
