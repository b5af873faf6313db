#pragma once

#include "automation/Application.h"
#include "automation/CommandLine.h"

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace automation {

/// How a server that was started for a host behaves.
struct ServerOptions {
    /// How long it waits for the first object. The system gives up on a starting server after two minutes.
    std::chrono::milliseconds patience{std::chrono::minutes{2}};
};

using MakeApplication = std::function<std::unique_ptr<Application>()>;

/// Carries out the task of the command line, from setting up the process to the last message. Gives the exit code of
/// the process: 0, or the number of the error (87 for a command line that makes no sense).
int RunProcess(const std::wstring& commandLine, const MakeApplication& make,
               const ServerOptions& options = {}) noexcept;

} // namespace automation
