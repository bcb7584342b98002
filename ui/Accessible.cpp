#include "ui/Accessible.h"

#include "platform/Utf16.h"
#include "platform/win32/Window.h"

#include <commctrl.h>
#include <initguid.h>
#include <oleacc.h>

#include <memory>
#include <utility>

namespace belvor {
namespace {

/// A COM pointer.
template <class Interface>
class Com {
public:
    Com() noexcept = default;
    Com(const Com&) = delete;
    Com& operator=(const Com&) = delete;
    ~Com()
    {
        if (object) object->Release();
    }
    Interface** out() noexcept { return &object; }
    void** outVoid() noexcept { return reinterpret_cast<void**>(&object); }
    Interface* operator->() const noexcept { return object; }
    explicit operator bool() const noexcept { return object != nullptr; }

private:
    Interface* object = nullptr;
};

HRESULT giveText(const std::string& text, BSTR* out)
{
    if (text.empty()) return S_FALSE;
    *out = SysAllocString(toWide(text).c_str());
    return *out ? S_OK : E_OUTOFMEMORY;
}

/// The window's own facts and parts, the child windows behind them, and for the rest the system's object.
class AccessibleWindow : public IAccessible {
public:
    AccessibleWindow(HWND shown, AccessibleSource facts) : window(shown), source(std::move(facts))
    {
        CreateStdAccessibleObject(window, OBJID_CLIENT, IID_IAccessible, standard.outVoid());
    }
    virtual ~AccessibleWindow() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** out) override
    {
        const bool known = id == IID_IUnknown || id == IID_IDispatch || id == IID_IAccessible;
        *out = known ? static_cast<IAccessible*>(this) : nullptr;
        if (!known) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override
    {
        return static_cast<ULONG>(InterlockedIncrement(&references));
    }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const LONG left = InterlockedDecrement(&references);
        if (left == 0) delete this;
        return static_cast<ULONG>(left);
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override
    {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override
    {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override
    {
        return standard ? standard->get_accParent(parent) : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override
    {
        *count = static_cast<long>(facts().parts.size()) + childWindows();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** out) override
    {
        *out = nullptr;
        const long parts = static_cast<long>(facts().parts.size());
        if (child.vt != VT_I4 || child.lVal < 1 || child.lVal > parts + childWindows()) return E_INVALIDARG;
        if (child.lVal <= parts) return S_FALSE;   // no object of its own
        HWND member = GetWindow(window, GW_CHILD);
        for (long i = parts + 1; i < child.lVal; ++i) member = GetWindow(member, GW_HWNDNEXT);
        return AccessibleObjectFromWindow(member, static_cast<DWORD>(OBJID_WINDOW), IID_IDispatch,
                                          reinterpret_cast<void**>(out));
    }
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override
    {
        return about(
            child, [&](const AccessibleFacts& known) { return giveText(known.name, name); },
            [&](const AccessiblePart& part) { return giveText(part.name, name); });
    }
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override
    {
        return about(
            child,
            [&](const AccessibleFacts& known) {
                if (known.value.empty() && standard) return standard->get_accValue(child, value);
                return giveText(known.value, value);
            },
            [&](const AccessiblePart& part) { return giveText(part.value, value); });
    }
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT, BSTR* text) override { return nothing(text); }
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override
    {
        return about(
            child,
            [&](const AccessibleFacts& known) {
                if (!known.role && standard) return standard->get_accRole(child, role);
                return giveNumber(known.role.value_or(ROLE_SYSTEM_CLIENT), role);
            },
            [&](const AccessiblePart&) { return giveNumber(ROLE_SYSTEM_INDICATOR, role); });
    }
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override
    {
        return about(
            child,
            [&](const AccessibleFacts&) {
                return standard ? standard->get_accState(child, state) : giveNumber(0, state);
            },
            [&](const AccessiblePart& part) {
                const bool focused = part.focused && GetFocus() == window;
                return giveNumber(STATE_SYSTEM_FOCUSABLE | (focused ? STATE_SYSTEM_FOCUSED : 0), state);
            });
    }
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT, BSTR* text) override { return nothing(text); }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT, long*) override { return nothing(file); }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT, BSTR* keys) override { return nothing(keys); }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override
    {
        child->vt = VT_EMPTY;
        if (GetFocus() != window) return standard ? standard->get_accFocus(child) : S_FALSE;
        const auto parts = facts().parts;
        for (std::size_t i = 0; i < parts.size(); ++i)
            if (parts[i].focused) return giveNumber(static_cast<long>(i) + 1, child);
        return giveNumber(CHILDID_SELF, child);
    }
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* child) override
    {
        child->vt = VT_EMPTY;
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* text) override
    {
        return isSelf(child) && standard ? standard->get_accDefaultAction(child, text) : nothing(text);
    }
    HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override
    {
        return isSelf(child) && standard ? standard->accSelect(flags, child) : E_INVALIDARG;
    }
    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                          VARIANT child) override
    {
        return about(
            child,
            [&](const AccessibleFacts&) {
                return standard ? standard->accLocation(left, top, width, height, child) : E_FAIL;
            },
            [&](const AccessiblePart& part) {
                RECT area = part.area;
                MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&area), 2);
                *left = area.left;
                *top = area.top;
                *width = area.right - area.left;
                *height = area.bottom - area.top;
                return S_OK;
            });
    }
    HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override
    {
        end->vt = VT_EMPTY;
        return isSelf(start) && standard ? standard->accNavigate(direction, start, end) : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE accHitTest(long x, long y, VARIANT* child) override
    {
        POINT at{x, y};
        ScreenToClient(window, &at);
        const auto parts = facts().parts;
        for (std::size_t i = 0; i < parts.size(); ++i)
            if (PtInRect(&parts[i].area, at)) return giveNumber(static_cast<long>(i) + 1, child);
        if (standard) return standard->accHitTest(x, y, child);
        child->vt = VT_EMPTY;
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override
    {
        return isSelf(child) && standard ? standard->accDoDefaultAction(child) : DISP_E_MEMBERNOTFOUND;
    }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override
    {
        return isSelf(child) && standard ? standard->put_accValue(child, value) : DISP_E_MEMBERNOTFOUND;
    }

private:
    static bool isSelf(const VARIANT& child) noexcept
    {
        return child.vt == VT_I4 && child.lVal == CHILDID_SELF;
    }
    static HRESULT giveNumber(long number, VARIANT* out) noexcept
    {
        out->vt = VT_I4;
        out->lVal = number;
        return S_OK;
    }
    static HRESULT nothing(BSTR* text) noexcept
    {
        *text = nullptr;
        return DISP_E_MEMBERNOTFOUND;
    }
    long childWindows() const noexcept
    {
        long count = 0;
        for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) ++count;
        return count;
    }
    /// None of a window that has gone: a program may keep this object longer.
    AccessibleFacts facts() const { return IsWindow(window) ? source() : AccessibleFacts{}; }

    /// No exception may cross into the system.
    template <class OfWindow, class OfPart>
    HRESULT about(const VARIANT& child, OfWindow ofWindow, OfPart ofPart) noexcept
    try {
        if (child.vt != VT_I4) return E_INVALIDARG;
        const AccessibleFacts known = facts();
        if (child.lVal == CHILDID_SELF) return ofWindow(known);
        const std::size_t index = static_cast<std::size_t>(child.lVal) - 1;
        return index < known.parts.size() ? ofPart(known.parts[index]) : E_INVALIDARG;
    } catch (const std::exception&) {
        return E_OUTOFMEMORY;
    }

    const HWND window;
    const AccessibleSource source;
    Com<IAccessible> standard;
    LONG references = 1;
};

constexpr UINT_PTR accessibleSubclass = 3;

LRESULT CALLBACK answerObject(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                              DWORD_PTR source)
{
    const auto* const facts = reinterpret_cast<const AccessibleSource*>(source);
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, answerObject, id);
        delete facts;
    } else if (message == WM_GETOBJECT) {
        if (const auto answer = guarded([&] { return accessibleObject(window, wParam, lParam, *facts); }))
            return *answer;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

void notify(DWORD event, HWND window, int index) noexcept
{
    NotifyWinEvent(event, window, OBJID_CLIENT, index + 1);
}

}   // namespace

std::optional<LRESULT> accessibleObject(HWND window, WPARAM wParam, LPARAM lParam, AccessibleSource source)
{
    if (static_cast<DWORD>(lParam) != static_cast<DWORD>(OBJID_CLIENT)) return std::nullopt;
    auto* const object = new AccessibleWindow(window, std::move(source));
    const LRESULT answer = LresultFromObject(IID_IAccessible, wParam, object);
    object->Release();   // the answer holds it
    return answer;
}

std::string titleOf(HWND window)
{
    wchar_t text[80];
    return toUtf8({text, static_cast<std::size_t>(GetWindowTextW(window, text, 80))});
}

void makeAccessible(HWND control, AccessibleSource source)
{
    auto kept = std::make_unique<AccessibleSource>(std::move(source));
    if (SetWindowSubclass(control, answerObject, accessibleSubclass, reinterpret_cast<DWORD_PTR>(kept.get())))
        kept.release();
}

void nameAccessible(HWND control, std::string name)
{
    makeAccessible(control, [name = std::move(name)] { return AccessibleFacts{name, {}, {}, {}}; });
}

void accessibleValueChanged(HWND window, int index) noexcept
{
    notify(EVENT_OBJECT_VALUECHANGE, window, index);
}
void accessibleFocusChanged(HWND window, int index) noexcept { notify(EVENT_OBJECT_FOCUS, window, index); }

}   // namespace belvor
