// The compiler's runtime reserves memory for exceptions that are raised when memory is short. A runtime that is linked
// into the module has a reserve of its own and does not release it when the module is unloaded.
namespace __gnu_cxx {
void __freeres(); // the runtime defines it for memory checkers and declares it nowhere
}

/// Runs after every other destructor of the module.
[[gnu::destructor(101)]] static void releaseEmergencyPool()
{
    __gnu_cxx::__freeres();
}
