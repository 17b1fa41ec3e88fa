#pragma once

#include "language.h"

#include <QString>

// What every program says about its command line.
namespace velmor::texts::arguments {

inline constexpr Text kLangValues{"--lang 只取 zh 或 en。", "--lang takes zh or en."};
inline constexpr Text kUnknownOption{"未知选项 %1。", "Unknown option %1."};

// "NAME VERSION" and a line end: what --version prints, for the running program.
QString versionLine();

}  // namespace velmor::texts::arguments
