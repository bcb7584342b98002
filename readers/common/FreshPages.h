#pragma once

#include "platform/LargeMemory.h"
#include "scene/ModelBuilder.h"

#include <algorithm>
#include <atomic>
#include <cstddef>

namespace belvor {

/// Has other threads provide the memory that a model is about to grow into: the one that adds to the
/// model would wait for it, and the others for that one. Only as much as the rest of the text is likely to
/// need.
class FreshPages {
public:
    FreshPages(ModelBuilder& model, std::size_t textSize) noexcept
        : builder(model),
          wholeText(textSize),
          usedBefore(model.model().memory())
    {}

    /// On the thread that adds, after all before `textLeft` has been added.
    void offer(std::size_t textLeft) noexcept
    {
        if (page.load(std::memory_order_relaxed) || textLeft >= wholeText) return;
        const auto used = static_cast<double>(builder.model().memory() - usedBefore);
        const double likely =
            used * static_cast<double>(textLeft) / static_cast<double>(wholeText - textLeft);
        page = builder.takeFreshPage(static_cast<std::size_t>(std::min(likely, farthest)));
    }
    /// On any other.
    void provide() noexcept
    {
        if (void* const next = page.exchange(nullptr)) provideLargePage(next);
    }

private:
    static constexpr double farthest = 8 << 20;   // bytes ahead

    ModelBuilder& builder;
    const std::size_t wholeText;
    const std::size_t usedBefore;
    std::atomic<void*> page{nullptr};
};

}   // namespace belvor
