#include "orvelcs/cli/program.h"

int main(int argumentCount, char** arguments)
{
    return static_cast<int>(Orvelcs::runProgram(argumentCount, arguments));
}
