#pragma once

#include "errors/Reporter.h"
#include "platform/Handle.h"
#include "resources/Texts.h"

#include <string>
#include <utility>

namespace belvor {

/// A piece of slow work for the render thread.
class Request : public TSHandlable {
public:
    /// On the render thread. Asks `progress` regularly whether to stop, and then throws
    /// Reporter::Abandoned; any other exception is shown to the user.
    virtual void run(Reporter& progress) = 0;
    /// Whether the thread ends once this request has run.
    virtual bool endsThread() const noexcept { return false; }

    /// What the user reads while it runs.
    const std::string name;
    /// How its stages are called: see stageText().
    const Text firstStageText;
    const int stageTexts;

protected:
    Request(std::string requestName, Text firstText, int texts)
        : name(std::move(requestName)),
          firstStageText(firstText),
          stageTexts(texts)
    {}
};

/// The last request: the thread ends when it reaches it.
class ExitRequest : public Request {
public:
    ExitRequest() : Request(textOf(Text::exitJob), Text::none, 0) {}
    void run(Reporter&) override {}
    bool endsThread() const noexcept override { return true; }
};

}   // namespace belvor
