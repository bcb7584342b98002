#pragma once

#include "account/Account.h"
#include "scene/Model.h"

#include <string>

namespace belvor {

/// What the status bar says of a model that has been read: what was not drawn of its file, or why nothing
/// was. Empty when there is nothing to say. `curvesShown`: the model's lines are drawn too.
std::string loadRemark(const Account& account, const Model& model, bool curvesShown);

/// A count as it is shown, "1,240".
std::string groupedNumber(std::uint64_t count);

/// What was not drawn and why, a line a type and reason, the parts separated by tabs; the most frequent
/// first. Then what was repaired. Lines end with CR and LF.
std::string accountTable(const Account& account);

}   // namespace belvor
