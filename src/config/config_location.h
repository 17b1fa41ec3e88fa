#pragma once

#include <QCoreApplication>
#include <QString>

namespace velmor {

inline constexpr char kConfigFileName[] = "TestConfig.cfg";

// The default configuration file: kConfigFileName in programDir when the
// program may write there, otherwise in the per-user application data folder
// (created here, so that a first save can succeed).
QString defaultConfigPath(const QString& programDir = QCoreApplication::applicationDirPath());

}  // namespace velmor
