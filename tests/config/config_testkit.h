#pragma once

#include "model/module_table.h"

#include <QByteArray>
#include <QString>

namespace velmor::test {

// A record in which every number and text differs from its neighbours and from
// zero (the strain flags alternate), so that a field read from or written to the
// wrong place cannot go unnoticed.
ModuleRecord distinctRecord();

// "" when the two are equal, otherwise where they first part, in hex.
QString firstDifference(const QByteArray& expected, const QByteArray& actual);

// Byte i of data as an unsigned number.
inline quint8 byteAt(const QByteArray& data, qsizetype i) { return static_cast<quint8>(data.at(i)); }

}  // namespace velmor::test
