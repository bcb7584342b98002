#pragma once

#include "platform/Thread.h"
#include "render/queue/RenderQueue.h"
#include "session/Session.h"
#include "tests/session/Mailbox.h"

#include <atomic>
#include <list>
#include <random>
#include <string>
#include <vector>

namespace belvor::test {

/// The files that a user of a World opens and writes; in a folder of their own, made once.
struct WorldFiles {
    WorldFiles();
    ~WorldFiles();
    WorldFiles(const WorldFiles&) = delete;
    WorldFiles& operator=(const WorldFiles&) = delete;

    std::string folder;
    std::vector<std::string> models;   ///< Good ones, bad ones, one that is missing, one of no known type.
    std::vector<std::string>
        images;   ///< The last of them cannot be written, where the system has such a file.
    std::vector<std::string> parameters;   ///< The last is in a folder that does not exist.
};

/// Everything around a session: a user who does anything at any moment, files, windows that are
/// remembered only, and a render thread. It checks what a user relies on:
/// - an image file is the picture that was shown when the user asked for it;
/// - no view is lost that is not in an image file, without a question;
/// - what was asked about one model is not applied to the next;
/// - when all is done, the picture and the panels show the current view of the current model.
class World : public Shell {
public:
    enum class Threads {
        one,   ///< Requests run on the test's thread, and the user acts in between: repeatable.
        two,   ///< They run on the render thread.
    };
    World(const WorldFiles& files, unsigned seed, Threads threads);
    ~World();

    /// Something happens: mostly, the user does something.
    void act();
    /// Lets all requests end, checks what is shown, and closes the program.
    void end();

    int actions = 0;

private:
    class Host;
    class Rows;
    struct Save {
        std::string file, bytes;
        Picture picture;
        bool running = true, failed = false;
    };

    // The surroundings of the session.
    std::optional<ChosenFile> askFile(FileQuestion question) override;
    SaveAnswer askToSave(const std::string& image) override;
    std::optional<ViewEdit> askView(const ViewParameters&, const ModelPlace&, const Units&) override;
    void warn(const std::string&) override { box(); }
    bool modalOpen() const override { return openBoxes != 0; }
    void setStatus(const std::string&) override {}
    void setTitle(const std::string& text) override { title = text; }
    void showModel() override {}
    void endDrags() override { dragged = {}; }
    void showMarkers(Thumbnail panel, const ViewMarkers& markers) override;
    void showEyeSlide(const EyeSlideRecord& record) override { slide = record; }
    void showLightMarker(const SphereMarker& marker) override { lights[marker.item] = marker; }
    void removeLightMarker(std::size_t light) override { lights[light + 1] = {}; }
    void showIntensity(std::size_t slider, int position) override { sliders[slider] = position; }
    void imageSizeChanged() override {}
    std::string fullPath(const std::string& path) override { return path; }
    void addRecent(const std::string& path) override { recent.insert(recent.begin(), path); }
    std::optional<std::string> recentFile(std::size_t index) override;
    std::optional<Canvas> canvas(Target target) override;
    void post(Target target, Handle<Request> request) override;
    void cancel(Target target) override;
    void showProperties() override {}
    void showImageSizes() override {}
    void showAbout() override {}
    void showHelp() override {}
    void toggleFullScreen() override {}
    void leaveFullScreen() override {}
    void toggleControls() override {}

    // The user and the render thread.
    int number(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }
    double real() { return number(2001) / 1000.0 - 1.0; }
    const std::string& oneOf(const std::vector<std::string>& names);
    void user();
    void command(int id);
    void edit();
    void drag();
    void meanwhile();
    void box();
    bool runRequest();
    void modelLoaded(std::uint32_t load, Model* model);
    void threadEnded();
    std::string fileOf(std::uint32_t save);
    void imageEnded(std::uint32_t save, bool whole, const std::string& bytes);

    // The rules.
    bool inAnImageFile(const Picture& picture) const;
    const std::string* nameOf(const Handle<Model>& model) const;
    void expectGone(const Picture& shown) const;
    void imagePosted(const std::string& fileName);
    void checkPanels() const;
    void checkPicture() const;

    const WorldFiles& files;
    const Threads threads;
    std::minstd_rand random;
    Handle<RenderQueue> queue;
    Handle<Host> host;
    Session session;

    std::atomic<int> openBoxes{0};
    bool running = false, exitPosted = false, exited = false;
    int depth = 0;
    std::string title;
    std::vector<std::string> recent;
    Handle<Model> dragged;   // the model that a drag began with
    Handle<Model> refused;   // the model of which the user does not want a picture, in this action
    std::optional<Picture> asked, imageAsked;   // what was shown when the user was last asked, in this action
    struct {
        bool givenUp = false;   // by the user's answer
        ViewParameters view;
    } granted;   // with the load or the end that was asked for last
    std::optional<std::pair<Handle<Model>, ViewParameters>> answered;   // and when the answer was given
    std::vector<Save> saves;   // by number; changed by the session's thread only, read by both
    Lock savesLock;
    ViewMarkers plan, elevation;
    EyeSlideRecord slide;
    SphereMarker lights[16];
    int sliders[16] = {};
    Handle<Rows> picture;   // what the drawing area was last drawn into
};

}   // namespace belvor::test
