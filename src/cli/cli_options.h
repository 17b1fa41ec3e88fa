#pragma once

#include "texts/language.h"

#include <QCommandLineParser>

#include <initializer_list>

namespace velmor::cli {

// The options of the commands; a command declares the ones it takes. Ports is
// --port where it may be given several times (ports, search); every other
// option with a value takes one.
enum class Opt { Port, Ports, Address, Save, Config, OnlyOneModule, Channels, ForceWrite, ForceBalance, ForceRestore, Out, OutFile, Module, Since, Kind };

// The option's name as the parser knows it ("port", "force").
QString optionName(Opt option);
// Declares the options with their descriptions in `language`.
void addOptions(QCommandLineParser& parser, std::initializer_list<Opt> options, Language language);
// The first declared option that takes one value but was given more than
// once ("address"), or empty: the last would not silently win.
QString optionGivenTwice(const QCommandLineParser& parser);

}  // namespace velmor::cli
