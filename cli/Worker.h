#pragma once

namespace belvor {

/// The only argument of a worker process.
inline constexpr const char* workerArgument = "--worker";

/// A process that draws models one by one, as the lists of texts on standard input ask for, and answers on
/// standard output (see Messages.h). It begins with two lists, the arguments of the command line and the
/// bytes of the views' files. Then come jobs: the model's number and path, and of each picture that an
/// earlier report tells of the name, hash and bytes. An answer is the exit status, "drawn", "skipped" or
/// "failed", what to tell on standard error, the line of the report, and "again" when more memory might be
/// there for a fresh process. It ends with its input; while it draws, by giving up. Answers the exit status.
int runWorker() noexcept;

}   // namespace belvor
