#include "tests/session/World.h"

#include "errors/BadFile.h"
#include "imagefile/OmbrBuff.h"
#include "platform/FileNames.h"
#include "render/queue/RenderThread.h"
#include "resources/ids.h"
#include "session/Commands.h"
#include "tests/support/Files.h"
#include "tests/support/Models.h"
#include "view/Intensity.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <mutex>
#include <utility>

namespace belvor::test {
namespace {

/// Takes every file and fails when it is written.
constexpr const char* fullDevice = "/dev/full";

/// Where nothing waits for a disk, if there is such a place.
std::filesystem::path fastFolder()
{
    const std::filesystem::path memory = "/dev/shm";
    return std::filesystem::is_directory(memory) ? memory : std::filesystem::temp_directory_path();
}

RequestKind kindOf(Target target)
{
    return target == Target::image ? imageFile : static_cast<RequestKind>(target) + 1;
}

std::string bytesOf(const std::string& path)
{
    std::string bytes;
    return readWholeFile(path, bytes) ? bytes : std::string();
}

/// What an image file of `picture` must hold.
std::string imageBytes(const Picture& picture, const std::string& file)
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

}   // namespace

WorldFiles::WorldFiles() : folder(temporaryNameFor((fastFolder() / "belvor-world").string()))
{
    std::filesystem::create_directory(folder);
    const auto write = [&](const std::string& name, const std::string& text) {
        models.push_back((std::filesystem::path(folder) / name).string());
        std::FILE* const file = openFile(models.back(), "wb");
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
    };
    for (int k = 1; k <= 4; ++k) {   // each of another shape, with a material that names it
        std::string text = boxText;
        text.replace(text.find("2 4 6"), 1, std::to_string(2 + 3 * k));
        text.replace(text.find("Base"), 4, "Model" + std::to_string(k));
        write("box" + std::to_string(k) + ".thf", text);
    }
    write("faces.dxf",
          "0\nSECTION\n2\nENTITIES\n0\n3DFACE\n8\n0\n10\n0\n20\n0\n30\n0\n11\n1\n21\n0\n31\n0\n12\n1\n22\n"
          "1\n32\n0\n13\n0\n23\n1\n33\n1\n0\nENDSEC\n0\nEOF\n");
    write("bad.thf", "Y \n3\n0 0 0\n1 0 0\n0 1 0\n0\n1\n1 m\n3 7 2 3\n");
    models.push_back(folder + "/missing.thf");
    models.push_back(folder + "/unknown.model");
    for (int k = 1; k <= 3; ++k) images.push_back(folder + "/image" + std::to_string(k) + ".omb");
    images.push_back(folder + "/no such folder/image.omb");
    parameters = {folder + "/a.bvp", folder + "/b.bvp", folder + "/no such folder/c.bvp"};
    if (std::filesystem::exists(fullDevice)) images.push_back(fullDevice);   // fails when it is written
}

WorldFiles::~WorldFiles()
{
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

/// The rows of a picture on the screen, and what it is to show.
class World::Rows : public Buffer {
public:
    Rows(int width, int rows, Picture shown) : Buffer(width), height(rows), content(std::move(shown)) {}
    void lineDone(int) override { ++done; }
    bool complete() const { return done == height; }
    const int height;
    const Picture content;

private:
    std::atomic<int> done{0};
};

/// Brings what the render thread has to say to the session's thread.
class World::Host : public RenderHost {
public:
    explicit Host(World& owner) : world(owner) {}
    void progressMade(Progress& progress) override
    {
        progress.updatePending();
        progress.updateDone();
        if (world.threads == Threads::one && world.number(8) == 0) world.user();
    }
    void progressEnded(const Progress&) noexcept override {}
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

    Mailbox mailbox;

private:
    void deliver(std::function<void()> task)
    {
        if (world.threads == Threads::one) task();
        else mailbox.send(std::move(task));
    }
    World& world;
};

World::World(const WorldFiles& given, unsigned seed, Threads use)
    : files(given),
      threads(use),
      random(seed + 1),
      queue(makeHandle<RenderQueue>()),
      host(makeHandle<Host>(*this)),
      session(*this, host)
{
    session.setImageSize({4, 3});
    if (threads == Threads::two) startRenderThread(queue, host);
}

World::~World() = default;

const std::string& World::oneOf(const std::vector<std::string>& names)
{
    return names[static_cast<std::size_t>(number(static_cast<int>(names.size())))];
}

// The render thread.

bool World::runRequest()
{
    if (threads == Threads::two) return host->mailbox.serve();
    RequestKind kind;
    Handle<Request> request;
    if (running || !queue->take(kind, request)) return false;
    running = true;
    const auto progress =
        makeHandle<Progress>(host, request->name, request->firstStageText, request->stageTexts);
    queue->setCurrent(kind, progress);
    bool failed = false;
    try {
        request->run(*progress);
        if (request->endsThread()) threadEnded();
    } catch (const Reporter::Abandoned&) {
    } catch (const std::exception&) {
        failed = true;
    }
    request = {};
    queue->setCurrent(0, {});
    progress->finish();
    running = false;
    if (failed) box();
    return true;
}

/// A box that says why something failed, on either thread.
void World::box()
{
    ++openBoxes;
    if (threads == Threads::one) meanwhile();
    --openBoxes;
}

void World::modelLoaded(std::uint32_t load, Model* model)
{
    const Picture before = session.picture();
    session.loading().modelLoaded(load, model);
    if (session.model() != before.model && before.view == granted.view) expectGone(before);
}

void World::threadEnded()
{
    exited = true;
    if (session.view() == granted.view) expectGone(session.picture());
}

std::string World::fileOf(std::uint32_t save)
{
    const std::lock_guard hold(savesLock);
    return saves[save - 1].file;
}

void World::imageEnded(std::uint32_t number, bool whole, const std::string& bytes)
{
    {
        const std::lock_guard hold(savesLock);
        ASSERT_LE(number, saves.size());
        Save& save = saves[number - 1];
        EXPECT_TRUE(save.running);
        save.running = false;
        save.failed = !whole;
        if (whole) {
            EXPECT_TRUE(bytes == save.bytes) << save.file << " is not the picture that was shown";
        }
    }
    session.saving().imageEnded(number, whole);
}

// What the session asks for.

/// While a box is open: the render thread goes on, and what other programs and the system send
/// must find the session closed to commands.
void World::meanwhile()
{
    if (depth > 2) return;
    ++depth;
    for (int k = number(4); k > 0; --k) {
        if (number(3) != 0) runRequest();
        else user();
    }
    --depth;
}

std::optional<ChosenFile> World::askFile(FileQuestion question)
{
    EXPECT_EQ(openBoxes.load(), threads == Threads::one ? 0 : openBoxes.load()) << "two questions at a time";
    (question == FileQuestion::image ? imageAsked : asked) = session.picture();
    ++openBoxes;
    meanwhile();
    --openBoxes;
    if (number(4) == 0) {
        imageAsked = {};
        return std::nullopt;
    }
    answered.emplace(session.model(), session.view());
    switch (question) {
    case FileQuestion::openModel:
        return ChosenFile{oneOf(files.models), static_cast<unsigned>(1 + number(5))};
    case FileQuestion::image: return ChosenFile{oneOf(files.images), 1};
    default: return ChosenFile{oneOf(files.parameters), 1};
    }
}

SaveAnswer World::askToSave(const std::string&)
{
    const Handle<Model> model = session.model();
    ++openBoxes;
    meanwhile();
    --openBoxes;
    switch (number(3)) {
    case 0: return SaveAnswer::cancel;
    case 1: return SaveAnswer::yes;
    default: refused = session.model(); return SaveAnswer::no;   // also of one that has just arrived
    }
}

std::optional<ViewEdit> World::askView(const ViewParameters&, const ModelPlace&, const Units&)
{
    asked = session.picture();
    ++openBoxes;
    meanwhile();
    --openBoxes;
    if (number(3) == 0) return std::nullopt;
    answered.emplace(session.model(), session.view());
    const double sky = number(10) / 10.0;
    return [sky](const ViewParameters& current) {
        ViewParameters next = current;
        next.skyIntensity = sky;
        next.imageSaved = next.imageSaved && next == current;
        return next;
    };
}

void World::showMarkers(Thumbnail panel, const ViewMarkers& markers)
{
    (panel == Thumbnail::plan ? plan : elevation) = markers;
}

std::optional<std::string> World::recentFile(std::size_t index)
{
    return index < recent.size() ? std::optional(recent[index]) : std::nullopt;
}

std::optional<Canvas> World::canvas(Target target)
{
    if (number(50) == 0 && target != Target::display) return std::nullopt;
    const int width = 6 + number(3), height = 5;
    const auto rows = makeHandle<Rows>(width, height, session.picture());
    if (target == Target::display) picture = rows;
    return Canvas{rows, width, height};
}

void World::post(Target target, Handle<Request> request)
{
    EXPECT_FALSE(exitPosted) << "posted behind the last request";
    if (request->endsThread()) exitPosted = true;
    if (target == Target::mainWindow) {
        granted = {refused == session.model(), session.view()};
        expectGone(session.picture());
    }
    if (target == Target::image) imagePosted(request->name);
    queue->post(kindOf(target), std::move(request));
}

void World::cancel(Target target)
{
    if (target == Target::mainWindow) exitPosted = false;
    queue->cancel(kindOf(target));
}

// The rules.

bool World::inAnImageFile(const Picture& shown) const
{
    for (const Save& save : saves)
        if (!save.failed && save.picture.model == shown.model && save.picture.view == shown.view) return true;
    return false;
}

/// A load or the end takes the picture away, or is asked for.
void World::expectGone(const Picture& shown) const
{
    EXPECT_TRUE(!shown.model || inAnImageFile(shown) || granted.givenUp)
        << "the view is neither in a file nor given up by the user";
}

/// The image file of a model: the last that was chosen for it and did not fail.
const std::string* World::nameOf(const Handle<Model>& model) const
{
    for (auto save = saves.rbegin(); save != saves.rend(); ++save)
        if (!save->failed && save->picture.model == model) return &save->file;
    return nullptr;
}

void World::imagePosted(const std::string& name)
{
    const auto chosen = std::exchange(imageAsked, {});
    const Picture shown = chosen ? *chosen : session.picture();
    std::string file;
    for (const std::string& image : files.images)
        if (fileName(image) == name && (!chosen || !image.ends_with("folder/image.omb"))) file = image;
    if (!chosen) {
        const std::string* const known = nameOf(session.model());
        ASSERT_TRUE(known) << "written without a name";
        EXPECT_EQ(fileName(*known), name) << "not the name that last worked";
        file = *known;
    }
    for (const Save& save : saves)
        EXPECT_FALSE(threads == Threads::one && save.running && save.file == file && file != fullDevice)
            << "two at a time into " << file;
    const std::lock_guard hold(savesLock);
    saves.push_back({file, imageBytes(shown, files.folder + "/expected.omb"), shown});
}

void World::checkPanels() const
{
    const ViewParameters& view = session.view();
    EXPECT_TRUE(!view.imageSaved || !session.model() || inAnImageFile(session.picture()))
        << "counts as saved and is not";
    if (!session.model()) return;
    EXPECT_EQ(plan, viewMarkers(view, Thumbnail::plan));
    EXPECT_EQ(elevation, viewMarkers(view, Thumbnail::elevation));
    EXPECT_EQ(slide, eyeSlideRecord(view));
    EXPECT_EQ(lights[0], eyeMarker(view));
    EXPECT_EQ(sliders[0], intensityToSlider(view.skyIntensity));
    for (std::size_t k = 0; k < view.lights.size(); ++k)
        EXPECT_EQ(sliders[k + 2], intensityToSlider(view.lights[k].intensity));
    EXPECT_EQ(title, "Belvor - " + std::string(fileName(session.modelPath())));
}

void World::checkPicture() const
{
    if (!session.model() || session.closing()) return;
    ASSERT_TRUE(picture);
    EXPECT_TRUE(picture->complete()) << "the picture has rows of an older one";
    EXPECT_EQ(picture->content.model, session.model());
    EXPECT_EQ(picture->content.view, session.view());
}

// The user.

void World::act()
{
    if (number(3) == 0) runRequest();
    else user();
}

void World::user()
{
    if (depth > 3) return;
    ++depth;
    ++actions;
    const bool locked = modalOpen();
    const Handle<Model> gaveUp = std::exchange(refused, {});
    const auto wasAsked = std::exchange(asked, {}), imageWasAsked = std::exchange(imageAsked, {});
    const auto wasAnswered = answered;
    answered.reset();
    const ViewParameters before = session.view();
    const bool wasClosing = session.closing();
    switch (number(12)) {
    case 0: command(ID_OPENMODEL); break;
    case 1: session.loading().openFile(oneOf(files.models)); break;
    case 2: command(ID_RECENT + number(8)); break;
    case 3: command(ID_SAVE); break;
    case 4: command(ID_SAVEAS); break;
    case 5: {
        constexpr int ids[] = {ID_SAVEPARAMETERS, ID_LOADPARAMETERS, ID_VIEWPARAMETERS, 999};
        command(ids[number(4)]);
        break;
    }
    case 6: {
        constexpr int ids[] = {ID_WHOLEMODEL, ID_INCREASEZOOM, ID_CENTRELOOKAT, ID_PREVIOUSVIEW};
        command(ids[number(4)]);
        break;
    }
    case 7:
        if (number(40) == 0) session.close();
        else session.reasonToStay();
        break;
    case 8: drag(); break;
    default:
        if (!locked) edit();   // the windows are disabled
        break;
    }
    if (locked) {
        EXPECT_TRUE(session.view() == before && session.closing() == wasClosing)
            << "a command under an open box";
    }
    if (answered && asked && asked->model != answered->first) {
        EXPECT_EQ(session.view(), answered->second) << "an answer about a model that has gone";
    }
    if (!running || threads == Threads::one) checkPanels();
    refused = gaveUp;
    asked = wasAsked;
    imageAsked = imageWasAsked;
    answered = wasAnswered;
    --depth;
}

void World::command(int id)
{
    const bool locked = modalOpen(), done = runCommand(session, id);
    // A box of the render thread may have opened or closed meanwhile.
    if (locked == modalOpen()) {
        EXPECT_EQ(done, id != 999 || session.closing() || locked);
    }
}

void World::edit()
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
void World::drag()
{
    if (modalOpen()) return;
    const Handle<Model> began = std::exchange(dragged, {});
    if (!began) {
        dragged = session.model();
        return;
    }
    EXPECT_EQ(began, session.model()) << "a drag of a marker of another model";
    session.moveMarkers(Thumbnail::elevation, {real(), real(), real(), real(), false});
}

void World::end()
{
    while (runRequest()) {}
    if (threads == Threads::one) checkPicture();
    while (!exited) {
        refused = session.model();   // the user insists
        session.close();
        runRequest();
    }
    EXPECT_FALSE(session.saving().running());
}

}   // namespace belvor::test
