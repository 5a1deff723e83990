// The compiler's runtime sets memory aside for exceptions that are raised when there is none left. A runtime that is
// part of the module has a pool of its own, and leaves it behind in the process whenever the module is unloaded.
namespace __gnu_cxx {
void __freeres(); // the runtime has it for checkers of memory and declares it nowhere
}

/// When everything else of the module is gone.
[[gnu::destructor(101)]] static void releaseEmergencyPool()
{
    __gnu_cxx::__freeres();
}
