#pragma once

#include "errors/BadFile.h"
#include "imagefile/OmbrBuff.h"
#include "platform/FileNames.h"
#include "resources/ids.h"
#include "session/Commands.h"
#include "tests/session/QuietShell.h"
#include "tests/session/WorldFiles.h"
#include "tests/support/Models.h"
#include "view/Intensity.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <random>
#include <thread>
#include <utility>

namespace belvor::test {

inline std::string bytesOf(const std::string& path)
{
    std::string bytes;
    return readWholeFile(path, bytes) ? bytes : std::string();
}

/// What an image file of `picture` must hold.
inline std::string imageBytes(const Picture& picture, const std::string& file)
{
    const ImageSize& size = picture.size;
    const Scene scene = buildScene(picture.view, picture.place, size, size.width, size.height);
    OmbrBuff sink(file, picture.model, scene.camera, size.width, size.height);
    SilentReporter silent;
    picture.model->render(*scene.camera, *scene.lights, sink, silent);
    sink.finish();
    const std::string bytes = bytesOf(file);
    removeFile(file);
    return bytes;
}

/// Everything around a session: a user who does anything at any moment, files, windows that are
/// remembered only, and a render thread. It checks what a user relies on:
/// - an image file is the picture that was shown when the user asked for it;
/// - no view is lost that is not in an image file, without a question;
/// - what was asked about one model is not applied to the next;
/// - when all is done, the picture and the panels show the current view of the current model.
class World : public QuietShell {
public:
    enum class Threads {
        one,   ///< Requests run on the test's thread, and the user acts in between: repeatable.
        two,   ///< They run on the render thread.
    };
    World(const WorldFiles& given, unsigned seed, Threads use)
        : files(given),
          threads(use),
          random(seed + 1),
          host(makeHandle<Host>(*this)),
          session(*this, host)
    {
        session.setImageSize({4, 3});
        if (threads == Threads::two) startRenderThread(queue, host);
    }

    /// Something happens: mostly, the user does something.
    void act() { number(3) == 0 ? void(runRequest()) : user(); }
    /// Lets all requests end, checks what is shown, and closes the program.
    void end()
    {
        while (runRequest()) {}
        if (threads == Threads::one) checkPicture();
        while (!exited) {
            action.refused = session.model();   // the user insists
            session.close();
            runRequest();
        }
        EXPECT_FALSE(session.saving().running());
    }

    int actions = 0;

private:
    /// Brings what the render thread has to say to the session's thread.
    class Host : public RenderHost {
    public:
        explicit Host(World& owner) : world(owner) {}
        void progressMade(Progress& progress) override
        {
            progress.updatePending();
            if (world.threads == Threads::two) return void(nowShown(Handle<Progress>(&progress)));
            progress.updateDone();
            if (world.number(8) == 0) world.user();
        }
        void progressEnded(const Progress&) noexcept override { nowShown({}); }
        void modelLoaded(std::uint32_t load, Model* model) override
        {
            deliver([&] { world.modelLoaded(load, model); });
        }
        void imageEnded(std::uint32_t save, bool whole) override
        {
            // Read here: the next save into this name waits for this thread.
            const std::string file = world.fileOf(save), bytes = whole ? bytesOf(file) : std::string();
            if (whole && save % 8 != 0) removeFile(file);   // replacing a file takes much longer
            deliver([&] { world.imageEnded(save, whole, bytes); });
        }
        void threadEnded() override
        {
            deliver([&] { world.threadEnded(); });
        }
        void showBadFile(const BadFile&) override { world.box(); }
        void warning(const std::string&) override { world.box(); }

        /// Shows progress, as a timer does, and does what the render thread has sent, if anything; that
        /// thread waits for it.
        bool serve()
        {
            if (const Handle<Progress> progress = nowShown({})) {
                EXPECT_TRUE(progress->finished() || progress->fraction() <= 1.0);
                progress->updateDone();
            }
            const std::function<void()>* const task = sent.exchange(nullptr);
            if (!task) std::this_thread::sleep_for(std::chrono::microseconds(200));
            else (*task)(), done.set();
            return task;
        }

    private:
        void deliver(const std::function<void()>& task)
        {
            if (world.threads == Threads::one) return task();
            sent = &task;
            done.wait();
        }
        /// Keeps the progress to be shown; what was kept before.
        Handle<Progress> nowShown(Handle<Progress> next) noexcept
        {
            const std::lock_guard hold(shownLock);
            return std::exchange(shown, std::move(next));
        }
        World& world;
        Lock shownLock;
        Handle<Progress> shown;
        std::atomic<const std::function<void()>*> sent{nullptr};
        Event done{"World"};
    };

    /// The rows of a picture on the screen, and what it is to show.
    class Rows : public Buffer {
    public:
        Rows(int width, int rows, Picture shown) : Buffer(width), height(rows), content(std::move(shown)) {}
        void lineDone(int) override { ++done; }
        bool complete() const { return done == height; }
        const int height;
        const Picture content;

    private:
        std::atomic<int> done{0};
    };

    struct Save {
        std::string file, bytes;
        Picture picture;
        bool running = true, failed = false;
    };

    // The surroundings of the session.
    std::optional<ChosenFile> askFile(FileQuestion question) override
    {
        EXPECT_TRUE(threads == Threads::two || openBoxes == 0) << "two questions at a time";
        (question == FileQuestion::image ? action.imageAsked : action.asked) = session.picture();
        underBox();
        if (number(4) == 0) return action.imageAsked = {}, std::nullopt;
        action.answered.emplace(session.model(), session.view());
        if (question == FileQuestion::openModel)
            return ChosenFile{oneOf(files.models), static_cast<unsigned>(1 + number(5))};
        return ChosenFile{oneOf(question == FileQuestion::image ? files.images : files.parameters), 1};
    }
    SaveAnswer askToSave(const std::string&) override
    {
        underBox();
        const auto said = static_cast<SaveAnswer>(number(3));
        if (said == SaveAnswer::no) action.refused = session.model();   // also one that has just arrived
        return said;
    }
    std::optional<ViewEdit> askView(const ViewParameters&, const ModelPlace&, const Units&) override
    {
        action.asked = session.picture();
        underBox();
        if (number(3) == 0) return std::nullopt;
        action.answered.emplace(session.model(), session.view());
        const double sky = number(10) / 10.0;
        return [sky](const ViewParameters& current) {
            ViewParameters next = current;
            next.skyIntensity = sky;
            next.imageSaved = next.imageSaved && next == current;
            return next;
        };
    }
    void warn(const std::string&) override { box(); }
    bool modalOpen() const override { return openBoxes != 0; }
    void setTitle(const std::string& text) override { title = text; }
    void endDrags() override { dragged = {}; }
    void showMarkers(Thumbnail panel, const ViewMarkers& markers) override
    {
        (panel == Thumbnail::plan ? plan : elevation) = markers;
    }
    void showEyeSlide(const EyeSlideRecord& record) override { slide = record; }
    void showLightMarker(const SphereMarker& marker) override { lights[marker.item] = marker; }
    void removeLightMarker(std::size_t light) override { lights[light + 1] = {}; }
    void showIntensity(std::size_t slider, int position) override { sliders[slider] = position; }
    void addRecent(const std::string& path) override { recent.insert(recent.begin(), path); }
    std::optional<std::string> recentFile(std::size_t index) override
    {
        return index < recent.size() ? std::optional(recent[index]) : std::nullopt;
    }
    std::optional<Canvas> canvas(Target target) override
    {
        if (number(50) == 0 && target != Target::display) return std::nullopt;
        const int width = 6 + number(3), height = 5;
        const auto rows = makeHandle<Rows>(width, height, session.picture());
        if (target == Target::display) picture = rows;
        return Canvas{rows, width, height};
    }
    void post(Target target, Handle<Request> request) override
    {
        EXPECT_FALSE(exitPosted) << "posted behind the last request";
        if (request->endsThread()) exitPosted = true;
        if (target == Target::mainWindow) {
            granted = {action.refused == session.model(), session.view()};
            expectGone(session.picture());
        }
        if (target == Target::image) imagePosted(request->name);
        QuietShell::post(target, std::move(request));
    }
    void cancel(Target target) override
    {
        if (target == Target::mainWindow) exitPosted = false;
        QuietShell::cancel(target);
    }

    // The user and the render thread.
    int number(int below) { return static_cast<int>(random() % static_cast<unsigned>(below)); }
    double real() { return number(2001) / 1000.0 - 1.0; }
    const std::string& oneOf(const std::vector<std::string>& names)
    {
        return names[static_cast<std::size_t>(number(static_cast<int>(names.size())))];
    }
    void user()
    {
        if (depth > 3) return;
        ++depth;
        ++actions;
        const bool locked = modalOpen();
        const Action outer = std::exchange(action, {});
        const ViewParameters before = session.view();
        const bool wasClosing = session.closing();
        constexpr int fileCommands[] = {ID_OPENMODEL, ID_SAVE, ID_SAVEAS};
        constexpr int others[] = {
            ID_SAVEPARAMETERS, ID_LOADPARAMETERS, ID_VIEWPARAMETERS, ID_WHOLEMODEL, ID_INCREASEZOOM,
            ID_CENTRELOOKAT,   ID_PREVIOUSVIEW,   ID_UNDO,           ID_REDO,       999};
        const int act = number(12);
        if (act < 3) command(fileCommands[number(3)]);
        else if (act < 5) command(others[number(10)]);
        else if (act == 5) command(ID_RECENT + number(8));
        else if (act == 6) session.loading().openFile(oneOf(files.models));
        else if (act == 7 && number(40) == 0) session.close();
        else if (act == 7) session.reasonToStay();
        else if (!locked) act == 8 ? drag() : edit();   // else the windows are disabled
        EXPECT_TRUE(!locked || (session.view() == before && session.closing() == wasClosing))
            << "a command under an open box";
        const bool modelHasGone =
            action.answered && action.asked && action.asked->model != action.answered->first;
        EXPECT_TRUE(!modelHasGone || session.view() == action.answered->second)
            << "an answer about a model that has gone";
        if (!running || threads == Threads::one) checkPanels();
        action = outer;
        --depth;
    }
    void command(int id)
    {
        const bool locked = modalOpen(), done = runCommand(session, id);
        // A box of the render thread may have opened or closed meanwhile.
        EXPECT_TRUE(locked != modalOpen() || done == (id != 999 || session.closing() || locked));
    }
    void edit()
    {
        switch (number(9)) {
        case 0: session.moveMarkers(Thumbnail::plan, {real(), real(), real(), real(), false}); break;
        case 1: session.moveAlongSight({real(), real()}); break;
        case 2: session.turn({180 * real(), 90 * real(), static_cast<std::uint32_t>(number(8))}); break;
        case 3: session.removeLight(static_cast<std::size_t>(number(8))); break;
        case 4: session.lookAtPixel(number(20) - 5, number(20) - 5); break;
        case 5: session.zoomBy(0.5 + real()); break;
        case 6: session.setIntensity(static_cast<std::size_t>(number(12)), number(24)); break;
        case 7: session.setImageSize({3 + number(4), 2 + number(3)}); break;
        default: session.redraw(static_cast<Target>(1 + number(3))); break;
        }
    }
    /// The mouse goes down on a marker, or up.
    void drag()
    {
        const Handle<Model> began = std::exchange(dragged, {});
        if (!began) return void(dragged = session.model());
        EXPECT_EQ(began, session.model()) << "a drag of a marker of another model";
        session.moveMarkers(Thumbnail::elevation, {real(), real(), real(), real(), false});
    }
    /// While a box is open: the render thread goes on, and what other programs and the system send
    /// must find the session closed to commands.
    void underBox()
    {
        ++openBoxes, ++depth;
        for (int k = depth > 3 ? 0 : number(4); k > 0; --k) number(3) != 0 ? void(runRequest()) : user();
        --openBoxes, --depth;
    }
    /// A box that says why something failed, on either thread.
    void box()
    {
        if (threads == Threads::one) return underBox();
        ++openBoxes;
        --openBoxes;
    }
    bool runRequest()
    {
        if (threads == Threads::two) return host->serve();
        if (std::exchange(running, true)) return false;
        const bool ran = runNext(*host);
        running = false;
        return ran;
    }
    void modelLoaded(std::uint32_t load, Model* model)
    {
        const Picture before = session.picture();
        session.loading().modelLoaded(load, model);
        if (session.model() != before.model && before.view == granted.view) expectGone(before);
    }
    void threadEnded()
    {
        exited = true;
        if (session.view() == granted.view) expectGone(session.picture());
    }
    std::string fileOf(std::uint32_t save)
    {
        const std::lock_guard hold(savesLock);
        return saves[save - 1].file;
    }
    void imageEnded(std::uint32_t number, bool whole, const std::string& bytes)
    {
        {
            const std::lock_guard hold(savesLock);
            Save& save = saves.at(number - 1);
            EXPECT_TRUE(std::exchange(save.running, false));
            save.failed = !whole;
            EXPECT_TRUE(!whole || bytes == save.bytes) << save.file << " is not the picture that was shown";
        }
        session.saving().imageEnded(number, whole);
    }

    // The rules.
    bool inAnImageFile(const Picture& shown) const
    {
        return std::ranges::any_of(saves, [&](const Save& save) {
            return !save.failed && save.picture.model == shown.model && save.picture.view == shown.view;
        });
    }
    /// The image file of a model: the last that was chosen for it and did not fail.
    const std::string* nameOf(const Handle<Model>& model) const
    {
        for (auto save = saves.rbegin(); save != saves.rend(); ++save)
            if (!save->failed && save->picture.model == model) return &save->file;
        return nullptr;
    }
    /// A load or the end takes the picture away, or is asked for.
    void expectGone(const Picture& shown) const
    {
        EXPECT_TRUE(!shown.model || inAnImageFile(shown) || granted.givenUp)
            << "the view is neither in a file nor given up by the user";
    }
    void imagePosted(const std::string& name)
    {
        const auto asked = std::exchange(action.imageAsked, {});
        const Picture shown = asked ? *asked : session.picture();
        std::string file;
        if (asked) {
            for (const std::string& image : files.images)
                if (fileName(image) == name && !image.ends_with("folder/image.omb")) file = image;
        } else {
            const std::string* const known = nameOf(session.model());
            ASSERT_TRUE(known) << "written without a name";
            EXPECT_EQ(fileName(*known), name) << "not the name that last worked";
            file = *known;
        }
        for (const Save& save : saves)
            EXPECT_FALSE(threads == Threads::one && save.running && save.file == file
                         && file != WorldFiles::fullDevice)
                << "two at a time into " << file;
        const std::lock_guard hold(savesLock);
        saves.push_back({file, imageBytes(shown, files.in("expected.omb")), shown});
    }
    void checkPanels() const
    {
        const ViewParameters& view = session.view();
        EXPECT_TRUE(!view.imageSaved || !session.model() || inAnImageFile(session.picture()))
            << "counts as saved and is not";
        if (!session.model()) return;
        EXPECT_TRUE(plan == viewMarkers(view, Thumbnail::plan)
                    && elevation == viewMarkers(view, Thumbnail::elevation) && slide == eyeSlideRecord(view)
                    && lights[0] == eyeMarker(view) && sliders[0] == intensityToSlider(view.skyIntensity));
        for (std::size_t k = 0; k < 8; ++k) {
            const bool present = k < view.lights.size();
            EXPECT_EQ(lights[k + 1],
                      present ? lightMarker(view, k).value_or(SphereMarker{}) : SphereMarker{});
            EXPECT_EQ(sliders[k + 2], present ? intensityToSlider(view.lights[k].intensity) : 0);
        }
        EXPECT_EQ(title, "Belvor - " + std::string(fileName(session.modelPath())));
    }
    void checkPicture() const
    {
        if (!session.model() || session.closing()) return;
        ASSERT_TRUE(picture);
        EXPECT_TRUE(picture->complete()) << "the picture has rows of an older one";
        EXPECT_TRUE(picture->content.model == session.model() && picture->content.view == session.view());
    }

    const WorldFiles& files;
    const Threads threads;
    std::minstd_rand random;
    Handle<Host> host;
    Session session;

    std::atomic<int> openBoxes{0};
    bool running = false, exitPosted = false, exited = false;
    int depth = 0;
    std::string title;
    std::vector<std::string> recent;
    Handle<Model> dragged;   // the model that a drag began with
    struct Action {
        Handle<Model> refused;                      // the model of which the user does not want a picture
        std::optional<Picture> asked, imageAsked;   // what was shown when the user was last asked
        std::optional<std::pair<Handle<Model>, ViewParameters>> answered;   // and when the answer was given
    } action;
    struct {
        bool givenUp = false;   // by the user's answer
        ViewParameters view;
    } granted;                 // with the load or the end that was asked for last
    std::vector<Save> saves;   // by number; changed by the session's thread only, read by both
    Lock savesLock;
    ViewMarkers plan, elevation;
    EyeSlideRecord slide;
    SphereMarker lights[16];
    int sliders[16] = {};
    Handle<Rows> picture;   // what the drawing area was last drawn into
};

}   // namespace belvor::test
