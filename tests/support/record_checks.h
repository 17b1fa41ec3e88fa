#pragma once

#include "model/module_table.h"

#include <QString>
#include <QTest>

namespace velmor::testing {

// What differs between a record and what a module holds, in the fields that
// travel on the wire: empty when they agree, else the first difference named
// ("channel 3 cutoff: 120 vs 140", actual first).
QString channelParameterDifference(const ChannelRecord& actual, const ChannelRecord& expected);
QString adjustDifference(const ChannelRecord& actual, const ChannelRecord& expected);
// Model code 3 keeps eleven gain coefficients and no zero coefficients.
QString coefficientDifference(const ChannelRecord& actual, const ChannelRecord& expected, bool wide);
QString informationDifference(const ModuleRecord& actual, const ModuleRecord& expected);
// Everything a whole read takes from `module`: information, then every
// channel it has.
QString wholeReadDifference(const ModuleRecord& actual, const ModuleRecord& module);

}  // namespace velmor::testing

#define VELMOR_VERIFY_SAME(difference)                                  \
    do {                                                                \
        const QString velmorDifference = (difference);                  \
        QVERIFY2(velmorDifference.isEmpty(), qPrintable(velmorDifference)); \
    } while (false)
