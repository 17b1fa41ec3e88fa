#pragma once

#include <QCoreApplication>
#include <QString>

namespace velmor {

inline constexpr char kConfigFileName[] = "TestConfig.cfg";

// The documentation folder of an installed program whose binary lies in
// programDir: programDir/../share/doc/velmor when that folder holds the
// package's copyright file, which only an install puts there (it stays even
// where the other documents are left out). Empty for a program in its build
// tree or copied anywhere else.
QString installedDocFolder(const QString& programDir);

// The default configuration file: kConfigFileName in programDir when the
// program may write there and is not installed, otherwise in the per-user
// application data folder (created here, so that a first save can succeed).
// An installed program never writes beside its binary, even as root.
QString defaultConfigPath(const QString& programDir = QCoreApplication::applicationDirPath());

}  // namespace velmor
