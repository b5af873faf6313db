#include "automation/MessageFilter.h"

#include <gtest/gtest.h>

namespace automation {
namespace {

class WithDialog final : public Application {
public:
    explicit WithDialog(bool isOpen) : open{isOpen} {}

    std::string Start(std::string, std::string, std::string, std::string, std::string) override { return {}; }
    bool IsRunning() const override { return true; }
    bool ModalActive() const override { return open; }
    void Run() override {}
    void Quit() override {}

private:
    bool open;
};

TEST(MessageFilterTest, PutsOffOnlyCallsOfTheBrowserWhileADialogIsOpen)
{
    constexpr WORD release = 2;
    constexpr WORD invoke = 6;
    constexpr WORD start = 7;
    const struct {
        IID interfaceId;
        WORD method;
        bool dialog;
        DWORD answer;
    } rows[] = {
        {IID__clsBrowser, start, false, SERVERCALL_ISHANDLED},  {IID_IDispatch, invoke, false, SERVERCALL_ISHANDLED},
        {IID__clsBrowser, start, true, SERVERCALL_RETRYLATER},  {IID_IDispatch, invoke, true, SERVERCALL_RETRYLATER},
        {IID__clsBrowser, release, true, SERVERCALL_ISHANDLED}, {IID_IDispatch, release, true, SERVERCALL_ISHANDLED},
        {IID_IUnknown, release, true, SERVERCALL_ISHANDLED},    {IID_IClassFactory, 3, true, SERVERCALL_ISHANDLED},
    };
    for (const auto& row : rows) {
        const WithDialog application{row.dialog};
        MessageFilter filter{application};
        INTERFACEINFO call{nullptr, row.interfaceId, row.method};
        EXPECT_EQ(filter.HandleInComingCall(CALLTYPE_TOPLEVEL, nullptr, 0, &call), row.answer) << &row - rows;
    }
}

} // namespace
} // namespace automation
