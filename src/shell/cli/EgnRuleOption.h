#pragma once

#include "patients/EgnRules.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QTextStream>

#include <optional>

// --egn-rule public|system, alike for every command that reads ages and birth dates from the
// personal numbers: the rule of this run, over the practice's own setting.
QCommandLineOption egnRuleOption();

// The rule the option names, or nullopt when it is not given. A word that names no rule is a
// fault of the command line: it is told on `err` after `prefix`, and `known` is set false.
std::optional<EgnRule> egnRuleOf(const QCommandLineParser &parser, QTextStream &err, const QString &prefix,
                                 bool &known);

// The same, and makes the rule the run's for the work on the practice; false after a fault.
bool applyEgnRuleOption(const QCommandLineParser &parser, QTextStream &err, const QString &prefix);
