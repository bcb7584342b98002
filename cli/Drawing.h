#pragma once

#include "cli/Options.h"
#include "cli/Reporting.h"

namespace belvor {

class ConsoleReporter;

/// What can be found out before a model is read, which may take long. Throws FileError.
void checkPlaces(const Options& options, const Job& job);

/// All work on one model, after checkPlaces() and with the views read: reads it, sets each view, draws
/// into its pictures, and gives them their names when all are whole. Throws what a reading throws, BadView,
/// FileError.
void draw(const Options& options, const Job& job, ConsoleReporter& reporter, RunNotes& notes);

/// How a run that did all it was asked for ends, for scripts that want to know more.
int statusAfter(const Options& options, const Reading& reading);

/// Tells a user who has named a file of another kind so.
void remarkOnKind(const Options& options, const Job& job);
/// Tells a user whose drawing the strict reading refuses that the other one may read it.
void remarkOnReading(const Options& options, const Job& job);

/// The call of a single model: all of it, the views' files and the report too, which is written after a
/// failure as well. Answers the exit status.
int drawReported(Options& options, ConsoleReporter& reporter);

}   // namespace belvor
