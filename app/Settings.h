#pragma once

namespace belvor {

class Session;

/// The checked items that are kept for the next start, in the user's registry. Failures are ignored: then
/// an item is as at first.
void loadSettings(Session& session);
void saveSettings(const Session& session) noexcept;

}   // namespace belvor
