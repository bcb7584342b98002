#pragma once

#include "account/Account.h"
#include "readers/ModelFile.h"
#include "scene/Model.h"

#include <string>

namespace belvor {

/// What the status bar says of a model that was read by these options: what was not drawn of its file, or why
/// nothing was: a reason that the user can do something about comes before a more frequent one. Empty when
/// there is nothing to say.
std::string loadRemark(const Account& account, const Model& model, const ReadingOptions& options);

/// A count as it is shown, "1,240".
std::string groupedNumber(std::uint64_t count);

/// What was not drawn and why, a line a type and reason, the parts separated by tabs; the most frequent
/// first. Then what was repaired. Lines end with CR and LF.
std::string accountTable(const Account& account);

}   // namespace belvor
