#pragma once

#include "resources/Texts.h"

#include <span>

namespace belvor {

class Session;

/// What must be there for a command. The menu item is grey without it, and with it its accelerator
/// and its toolbar button.
enum class Needs {
    nothing,
    modelInMenu,   ///< A model; but a program that sends the command is answered without one too.
    model,
    undo,   ///< A view change that can be undone.
    redo,   ///< One that was undone.
};

/// A command: everything that differs from one to the next.
struct Command {
    int id;   ///< As menus, accelerators and other programs send it.
    Needs needs;
    Text help;   ///< In the status bar, while the menu item or the toolbar button is chosen.
    void (*run)(Session& session);
    bool (*isOn)(const Session& session) =
        nullptr;   ///< Of an item with a check mark that the session keeps.
};

std::span<const Command> commands() noexcept;
/// The command of that number; null for none.
const Command* commandOf(int id) noexcept;
/// Whether the menu item of `command` is to be chosen now.
bool available(const Command& command, const Session& session) noexcept;

/// Runs command `id`, also one that opens a file opened before; nothing happens while a box is
/// open or the program ends. False for a number that is no command.
bool runCommand(Session& session, int id);

}   // namespace belvor
