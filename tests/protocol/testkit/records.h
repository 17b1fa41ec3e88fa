#pragma once

#include "model/module_table.h"

#include <QString>

#include <random>

namespace velmor::testkit {

// A record in which every field holds a value that no reply can produce
// (negative numbers, or bytes no test frame carries), so that any store
// through a parser shows up when the record is compared afterwards.
ModuleRecord markedRecord();

// A record whose wire-carried fields hold random values inside their wire
// widths (bytes 0..255, words 0..65535, nibbles 0..15): what a module could
// send back unchanged.
ModuleRecord randomWireRecord(std::mt19937& rng);

// Field-by-field list of what differs, empty when the records are equal.
QString recordDifferences(const ModuleRecord& actual, const ModuleRecord& expected);

bool sameRecord(const ModuleRecord& actual, const ModuleRecord& expected, const char* file, int line);

}  // namespace velmor::testkit

#define VELMOR_COMPARE_RECORD(actual, expected)                                             \
    do {                                                                                    \
        if (!::velmor::testkit::sameRecord((actual), (expected), __FILE__, __LINE__))       \
            return;                                                                         \
    } while (false)
