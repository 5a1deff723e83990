#include <windows.h>

#include <cstdlib>
#include <string>

#include "misdeeds.h"

namespace Misdeeds {
namespace {

/// One of the libraries beside the program.
class Library {
public:
    explicit Library(const wchar_t* file) : handle_(LoadLibraryW(file))
    {
        if (handle_ == nullptr)
            std::exit(4);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() { static_cast<void>(FreeLibrary(handle_)); } // it was loaded

    char* lend(std::size_t size) const { return function<char*(std::size_t)>("lend")(size); }
    void takeBack(const char* block) const { function<void(const char*)>("takeBack")(block); }
    void writeInto(char* block, std::size_t size) const
    {
        function<void(char*, std::size_t)>("writeInto")(block, size);
    }
    void freeInitial() const { function<void()>("freeInitial")(); }

private:
    template <class Function>
    Function* function(const char* name) const
    {
        return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(handle_, name)));
    }

    HMODULE handle_;
};

const wchar_t* const kLender = L"lending_library.dll";
const wchar_t* const kWriter = L"writing_library.dll";
const wchar_t* const kKeeper = L"keeping_library.dll";

void writeBehindOthersBlock()
{
    const Library lender(kLender);
    const Library writer(kWriter);
    char* const block = lender.lend(100);
    writer.writeInto(block, 101);
    lender.takeBack(block);
}

void exchangeBlocks()
{
    const Library lender(kLender);
    const Library writer(kWriter);
    char* const block = lender.lend(100);
    writer.writeInto(block, 100);
    writer.takeBack(block);
    lender.freeInitial();
    writer.freeInitial();
}

void freeInitialTwice()
{
    const Library lender(kLender);
    lender.freeInitial();
    lender.freeInitial();
}

void leakFromLibrary()
{
    const Library lender(kLender);
    lender.freeInitial();
    static_cast<void>(lender.lend(100));
}

// The library stays loaded, and it has the address.
void keepInLibrary()
{
    static_cast<void>(LoadLibraryW(kKeeper)); // it is loaded a second time here
    static_cast<void>(Library(kKeeper).lend(100));
}

void unloadKeeper()
{
    const Library keeper(kKeeper);
    keeper.freeInitial();
    static_cast<void>(keeper.lend(100));
}

} // namespace

Deeds libraries()
{
    return {{"write-behind-others-block", writeBehindOthersBlock},
            {"exchange-blocks", exchangeBlocks},
            {"free-initial-twice", freeInitialTwice},
            {"leak-from-library", leakFromLibrary},
            {"keep-in-library", keepInLibrary},
            {"unload-keeper", unloadKeeper}};
}

} // namespace Misdeeds
