#pragma once

#include "render/queue/RenderThread.h"
#include "session/Session.h"
#include "tests/render/queue/FakeHost.h"

#include <functional>
#include <string>

namespace belvor::test {

/// Surroundings without windows and without a user: requests run when they are told to, on the test's thread.
class QuietShell : public Shell {
public:
    std::optional<ChosenFile> askFile(FileQuestion) override
    {
        if (underDialog) underDialog();
        return chosen;
    }
    SaveAnswer askToSave(const std::string&) override { return answer ? answer() : SaveAnswer::no; }
    std::optional<ViewEdit> askView(const ViewParameters&, const ModelPlace&, const Units&) override
    {
        return {};
    }
    void warn(const std::string& text) override { status = text; }
    bool modalOpen() const override { return false; }
    void setStatus(const std::string& text) override { status = text; }
    void setTitle(const std::string&) override {}
    void setRemark(const std::string& text) override { remark = text; }
    void showModel() override {}
    void endDrags() override {}
    void showMarkers(Thumbnail, const ViewMarkers&) override { ++viewsShown; }
    void showEyeSlide(const EyeSlideRecord&) override {}
    void showLightMarker(const SphereMarker&) override {}
    void removeLightMarker(std::size_t) override {}
    void showIntensity(std::size_t, int) override {}
    void imageSizeChanged() override {}
    std::string fullPath(const std::string& path) override { return path; }
    void addRecent(const std::string&) override {}
    std::optional<std::string> recentFile(std::size_t) override { return std::nullopt; }
    void watchFile(const std::string&, const FileStamp& stamp) override { watched = stamp; }
    std::optional<Canvas> canvas(Target target) override
    {
        if (!sinkOf) return std::nullopt;
        const Handle<Buffer> sink = sinkOf(target);
        return Canvas{sink, sink->width(), sink->width()};
    }
    void post(Target target, Handle<Request> request) override
    {
        queue->post(kindOf(target), std::move(request));
    }
    void cancel(Target target) override { queue->cancel(kindOf(target)); }
    void showProperties() override {}
    void showImageSizes() override {}
    void showAbout() override {}
    void showHelp() override {}
    void copyPicture() override {}
    void settingsChanged() override { ++settings; }
    void toggleFullScreen() override { fullScreen = !fullScreen; }
    void leaveFullScreen() override { fullScreen = false; }
    void toggleControls() override {}

    /// Runs the next request that waits, as the render thread does; false when there is none.
    bool runNext(RenderHost& host)
    {
        RequestKind kind;
        Handle<Request> request;
        if (!queue->take(kind, request)) return false;
        if (runRequest(*queue, host, kind, std::move(request))) host.threadEnded();
        return true;
    }
    static RequestKind kindOf(Target target)
    {
        return target == Target::image ? imageFile : static_cast<RequestKind>(target) + 1;
    }

    std::function<Handle<Buffer>(Target)> sinkOf;   // none: nothing is drawn
    std::optional<ChosenFile> chosen;
    std::function<void()> underDialog;    // while the user chooses a file
    std::function<SaveAnswer()> answer;   // to the question whether to save
    std::string status, remark;
    FileStamp watched;
    bool fullScreen = false;
    int viewsShown = 0, settings = 0;
    Handle<RenderQueue> queue = makeHandle<RenderQueue>();
};

}   // namespace belvor::test
