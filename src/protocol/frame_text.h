#pragma once

#include <QByteArrayView>
#include <QString>

namespace velmor {

// Two capital hex digits per byte, each followed by two blanks; a 55-byte frame
// breaks after bytes 15, 31 and 47 (CR LF) so that it reads in lines of 16.
QString frameToText(QByteArrayView frame);

}  // namespace velmor
