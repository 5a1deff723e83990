#include "orvelcs/cli/process.h"
#include "orvelcs/cli/program.h"

int main(int argumentCount, char** arguments)
{
    return Orvelcs::systemExitStatus(Orvelcs::runProgram(argumentCount, arguments));
}
