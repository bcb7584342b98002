#pragma once

namespace belvor {

struct Options;

/// What the rules of single options do not say. Throws Usage.
void checkWhole(const Options& options);

}   // namespace belvor
