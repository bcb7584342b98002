#pragma once

#include "account/Account.h"
#include "scene/Model.h"

#include <cstdint>

namespace belvor {

/// How a file is to be read.
struct ReadingOptions {
    bool log = false;   ///< Write a diagnostic log beside the file, where the format has one.
};

/// What a reader gives: the model, and what it met in the file and did not draw.
struct Reading {
    Handle<Model> model;
    Account account;
};

}   // namespace belvor
