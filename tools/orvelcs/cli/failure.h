// What ends a command early, and with which exit status.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include "orvelcs/cli/exit_status.h"

namespace Orvelcs {

/// A result of the host or of the spatial-reference library, such as eVetoed (325).
struct ResultCode {
    int number = 0;
    std::string name;

    /// "eVetoed (325)".
    std::string text() const { return name + " (" + std::to_string(number) + ")"; }
};

/// Says what a command failed at, and why. The program prints it as one line on standard error.
class Failure : public std::runtime_error {
public:
    /// `code` is the result of the host or of the spatial-reference library, where one of them was asked.
    Failure(std::string subject, const std::string& message, ExitStatus status = ExitStatus::failed,
            std::optional<ResultCode> code = std::nullopt)
        : std::runtime_error(message), subject_(std::move(subject)), status_(status), code_(std::move(code))
    {
    }

    const std::string& subject() const { return subject_; }
    ExitStatus status() const { return status_; }
    const std::optional<ResultCode>& code() const { return code_; }
    /// The message after its subject.
    std::string text() const { return subject_ + ": " + what(); }

private:
    std::string subject_;
    ExitStatus status_;
    std::optional<ResultCode> code_;
};

inline Failure wrongUsage(std::string subject, const std::string& message)
{
    return Failure(std::move(subject), message, ExitStatus::wrongUsage);
}

} // namespace Orvelcs
