#include "app/Taskbar.h"
#include "tests/render/queue/FakeHost.h"

#include <gtest/gtest.h>

namespace belvor {
namespace {

/// Notes what would be shown.
class NotedTaskbar : public Taskbar {
public:
    using Taskbar::Taskbar;
    std::vector<int> notes;

private:
    void tell(int done) noexcept override { notes.push_back(done); }
};

}   // namespace

TEST(Taskbar, ShowsHowFarARunIsAndWhenItIsOver)
{
    NotedTaskbar taskbar(nullptr);
    taskbar.clear();   // nothing has run
    const auto progress = makeHandle<Progress>(makeHandle<FakeHost>(), "", Text::none, 0);
    taskbar.show(*progress);
    for (const auto& [stage, fraction] : {std::pair{0, 0.5}, {0, 0.25}, {1, 0.5}, {1, 7.0}}) {
        progress->progress(2, stage, fraction);
        taskbar.show(*progress);
    }
    taskbar.clear();
    EXPECT_EQ(taskbar.notes, (std::vector{Taskbar::unknown, 250, 250, 750, 1000, Taskbar::none}));
}

}   // namespace belvor
