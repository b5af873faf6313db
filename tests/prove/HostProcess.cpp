// A host that can be killed: HostProcess.exe HOLD_MILLISECONDS
// creates the browser, starts it, and holds it for so long. Prints what each call gave, and how long the answer took.
#include "tests/prove/Host.h"

#include <cstdio>
#include <cstdlib>

int main(int count, char** arguments)
{
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    {
        prove::Host host;
        std::printf("created %lx %d\n", static_cast<unsigned long>(host.Created()), host.Attempts());
        std::fflush(stdout);
        const auto answer = host.Start(L"Process");
        std::printf("answer %lx %d\n", static_cast<unsigned long>(answer.outcome),
                    static_cast<int>(answer.took.count()));
        std::fflush(stdout);
        Sleep(count > 1 ? static_cast<DWORD>(std::atoi(arguments[1])) : 0);
    }
    CoUninitialize();
    return 0;
}
