#include "record_check.h"

#include "image_layout.h"
#include "model/capabilities.h"

#include <QtEndian>

#include <algorithm>

namespace velmor {
namespace {

bool printableName(QByteArrayView name)
{
    const bool printable = std::all_of(name.begin(), name.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte >= 0x20 && byte < 0x7F;
    });
    return printable && std::any_of(name.begin(), name.end(), [](char c) { return c != ' '; });
}

}  // namespace

RecordCheck checkStoredRecord(QByteArrayView stored)
{
    if (stored.size() != kStoredBytes)
        return {RecordFault::Size, static_cast<int>(stored.size())};
    const auto* bytes = reinterpret_cast<const uchar*>(stored.data());
    const int modelCode = bytes[moduleImage::kCapabilities];
    if (modelCode > unknownCode(Capability::Model))
        return {RecordFault::ModelCode, modelCode};
    if (!printableName(stored.sliced(moduleImage::kModelName, kTextChars)))
        return {RecordFault::ModelName, 0};
    const int channels = qFromLittleEndian<qint16>(bytes + moduleImage::kChannelCount);
    if (channels != 4 && channels != 8 && channels != 16)
        return {RecordFault::ChannelCount, channels};
    return {};
}

}  // namespace velmor
