// surfpath: the host's command-line program.

#include "HxShell.h"

#include "HxObjectPool.h"

int main(int argc, char** argv) {
    HxShell shell;
    const int code = shell.run(argc, argv);
    // Objects go before the interpreter and the libraries they came from.
    HxObjectPool::getTheObjectPool().removeAll();
    return code;
}
