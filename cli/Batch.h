#pragma once

namespace belvor {

struct Options;
class ConsoleReporter;

/// Draws all models of the call in worker processes, each in turn: what goes wrong with one is told and
/// changes nothing for the others. Messages and lines of the report come in the order of the models. Answers
/// the largest exit status. Throws FileError (a view's file, the report), BadView, Usage, Win32Error,
/// Reporter::Abandoned.
int drawAll(Options& options, ConsoleReporter& reporter);

}   // namespace belvor
