#include "app/Taskbar.h"
#include "platform/win32/Windows.h"

#include <gtest/gtest.h>
#include <shobjidl.h>

#include <string>

namespace belvor {
namespace {

/// A taskbar that writes down what it is told.
class NotedTaskbar : public ITaskbarList3 {
public:
    explicit NotedTaskbar(std::string& notes) : text(notes) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        text += "released";
        return 1;
    }
    HRESULT STDMETHODCALLTYPE HrInit() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE AddTab(HWND) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE DeleteTab(HWND) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ActivateTab(HWND) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetActiveAlt(HWND) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE MarkFullscreenWindow(HWND, BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetProgressValue(HWND, ULONGLONG done, ULONGLONG whole) override
    {
        text += std::to_string(done) + " of " + std::to_string(whole) + "; ";
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetProgressState(HWND, TBPFLAG state) override
    {
        text += state == TBPF_INDETERMINATE ? "runs; " : state == TBPF_NOPROGRESS ? "over; " : "?";
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE RegisterTab(HWND, HWND) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE UnregisterTab(HWND) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetTabOrder(HWND, HWND) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetTabActive(HWND, HWND, DWORD) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ThumbBarAddButtons(HWND, UINT, LPTHUMBBUTTON) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ThumbBarUpdateButtons(HWND, UINT, LPTHUMBBUTTON) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ThumbBarSetImageList(HWND, HIMAGELIST) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetOverlayIcon(HWND, HICON, LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetThumbnailTooltip(HWND, LPCWSTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE SetThumbnailClip(HWND, RECT*) override { return S_OK; }

private:
    std::string& text;
};

class QuietHost : public RenderHost {
public:
    void progressMade(Progress&) override {}
    void progressEnded(const Progress&) noexcept override {}
    void modelLoaded(std::uint32_t, Model*) override {}
    void imageEnded(std::uint32_t, bool) override {}
    void threadEnded() override {}
    void showBadFile(const BadFile&) override {}
    void warning(const std::string&) override {}
};

}   // namespace

TEST(Taskbar, ShowsHowFarARunIsAndWhenItIsOver)
{
    std::string notes;
    NotedTaskbar list(notes);
    {
        Taskbar taskbar(nullptr, &list);
        taskbar.clear();   // nothing has run
        const auto progress = makeHandle<Progress>(makeHandle<QuietHost>(), "", Text::none, 0);
        taskbar.show(*progress);
        for (const auto& [stage, fraction] : {std::pair{0, 0.5}, {0, 0.25}, {1, 0.5}, {1, 7.0}}) {
            progress->progress(2, stage, fraction);
            taskbar.show(*progress);
        }
        taskbar.clear();
    }
    EXPECT_EQ(notes, "runs; 250 of 1000; 250 of 1000; 750 of 1000; 1000 of 1000; over; released");
}

}   // namespace belvor
