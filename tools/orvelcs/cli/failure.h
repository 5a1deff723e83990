// What ends a command early.
#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "orvelcs/cli/exit_status.h"

namespace Orvelcs {

/// The command cannot go on: what it is about, and why. It becomes the one line on standard error.
class Failure : public std::runtime_error {
public:
    Failure(std::string subject, const std::string& message, ExitStatus status = ExitStatus::failed)
        : std::runtime_error(message), subject_(std::move(subject)), status_(status)
    {
    }

    const std::string& subject() const { return subject_; }
    ExitStatus status() const { return status_; }

private:
    std::string subject_;
    ExitStatus status_;
};

inline Failure wrongUsage(std::string subject, const std::string& message)
{
    return Failure(std::move(subject), message, ExitStatus::wrongUsage);
}

} // namespace Orvelcs
