#pragma once

#include "model/language.h"

#include <QCommandLineParser>

#include <initializer_list>

namespace velmor::cli {

// The options of the commands; a command declares the ones it takes.
enum class Opt { Port, Address, Save, Config, OnlyOneModule, Channels, ForceWrite, ForceBalance, Out };

// The option's name as the parser knows it ("port", "force").
QString optionName(Opt option);
// Declares the options with their descriptions in `language`.
void addOptions(QCommandLineParser& parser, std::initializer_list<Opt> options, Language language);

}  // namespace velmor::cli
