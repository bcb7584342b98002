#pragma once

namespace belvor::window {

class Program;

/// Ends the program under test when a test takes too long: every wait in the test then
/// fails at once, and the next test starts afresh.
namespace Watchdog {
void begin(int seconds);            ///< At the start of a test.
void guard(Program& program);       ///< The program that the test drives now.
void release() noexcept;            ///< It goes.
bool end();                         ///< At the end of a test; whether it was within its time.
}   // namespace Watchdog

}   // namespace belvor::window
