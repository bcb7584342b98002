#pragma once

namespace belvor {

struct Options;

/// Options that do not go together, before anything is read. Throws Usage.
void checkTogether(const Options& options);

/// What the rules of single options do not say. Throws Usage.
void checkWhole(const Options& options);

}   // namespace belvor
