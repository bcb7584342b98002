#pragma once

#include "platform/win32/Handles.h"

#include <set>
#include <string>

namespace belvor {

/// Marks the fields of a dialog whose text is no number, and says in a balloon what they are read as.
class NumberMarks {
public:
    /// The field may have changed: marks it or takes the mark away. `remark` is shown even for a number;
    /// empty for none.
    void check(HWND dialog, int control, const std::string& decimalPoint, const std::string& remark = {});
    /// WM_CTLCOLOREDIT: the brush of a marked field; null for another.
    HBRUSH brush(HDC dc, HWND field) noexcept;

private:
    std::set<HWND> marked;
    GdiObject<HBRUSH> ground;
};

}   // namespace belvor
