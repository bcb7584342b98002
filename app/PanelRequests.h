#pragma once

#include "app/Belvor.h"

namespace belvor {

/// Applies what a panel or the drawing area asks for to the view. False for any other message.
bool applyPanelRequest(Belvor& belvor, UINT message, WPARAM wParam, LPARAM lParam);

}   // namespace belvor
