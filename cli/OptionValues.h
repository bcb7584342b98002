#pragma once

#include "cli/Options.h"

#include <string>

namespace belvor {

// What the values of single options mean. All throw Usage, with the option's name where several share a
// function. Words may be written in any case.

void takeSize(const std::string& value, Options& options);
void takeThreads(const std::string& value, Options& options);
void takeProcesses(const std::string& value, Options& options);
/// "512M".
void takeMaxMemory(const std::string& value, Options& options);
void takeType(const std::string& value, Options& options);
void takeFormat(const std::string& value, Options& options);
/// "0:100".
void takeRows(const std::string& value, Options& options);
void takeReading(const std::string& value, Options& options);
void takeColours(const std::string& value, Options& options);
void takeBounds(const std::string& value, Options& options);
void takeEdges(const std::string& value, Options& options);
void takeLineWidth(const std::string& value, Options& options);
void takeSurfaces(const std::string& value, Options& options);
std::array<std::uint8_t, 3> colourOf(const char* option, const std::string& value);

/// Three numbers with commas between them.
Point<3> pointOf(const char* option, const std::string& value);
double numberOf(const char* option, const std::string& value);
double positiveNumberOf(const char* option, const std::string& value);
/// "3=BEARING,ELEVATION,INTENSITY".
void takeLight(const std::string& value, Options& options);
void takeProjection(bool parallel, Options& options);

}   // namespace belvor
