// The entry point: loading and unloading.
#include "embedded/host/application/application.h"
#include "frame/application.h"
#include "frame/entry_point.h"
#include "sweep/initial_states.h"
#include "sweep/scenario.h"

namespace Tests {
namespace {

/// The destructor unloads the module, whatever the message did.
class SendMessage : public Call {
public:
    SendMessage(int message, bool isLoadedBefore) : message_(message)
    {
        if (isLoadedBefore) {
            EXPECT_EQ(Orvel::moduleApplication().load(), Qeapp::eOk);
        }
    }
    ~SendMessage() override { EXPECT_EQ(Orvel::moduleApplication().unload(), Qeapp::eOk); }
    int make(Fixture& /*fixture*/) override { return qerxEntryPoint(message_, &handle_); }

private:
    int message_;
    int handle_ = 0; // the host knows no such module
};

Scenario sending(const std::string& name, int message, bool isLoadedBefore)
{
    return {.function = "qerxEntryPoint",
            .name = name,
            .initialState = emptyDrawing,
            .call = calling<SendMessage>(message, isLoadedBefore)};
}

} // namespace

Scenarios frameScenarios()
{
    return {
        sending("load", QeRx::kInitAppMsg, false),
        sending("load twice", QeRx::kInitAppMsg, true),
        sending("unload", QeRx::kUnloadAppMsg, true),
    };
}

} // namespace Tests
