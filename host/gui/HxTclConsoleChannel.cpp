#include "HxTclConsoleChannel.h"

#include "HxInterpreter.h"
#include "HxMessage.h"

#include <tcl.h>

#include <cerrno>
#include <cstdio>
#include <string>

namespace {
struct ConsoleStream {
    HxConsoleOutput* console = nullptr;
    bool isError = false;
    std::string pending;  // the start of a line not ended yet
    Tcl_Channel channel = nullptr;
    Tcl_Channel terminal = nullptr;
};
ConsoleStream theStreams[2];

int outputProc(ClientData data, char const* buffer, int length, int* /*errorCode*/) {
    auto* stream = static_cast<ConsoleStream*>(data);
    std::FILE* terminal = stream->isError ? stderr : stdout;
    std::fwrite(buffer, 1, static_cast<size_t>(length), terminal);
    std::fflush(terminal);
    stream->pending.append(buffer, static_cast<size_t>(length));
    const size_t end = stream->pending.rfind('\n');
    if (end != std::string::npos) {
        stream->console->print(stream->pending.substr(0, end + 1).c_str(), stream->isError);
        stream->pending.erase(0, end + 1);
    }
    return length;
}

int inputProc(ClientData, char*, int, int* errorCode) {
    *errorCode = EINVAL;
    return -1;
}

int closeProc(ClientData, Tcl_Interp*) { return 0; }
void watchProc(ClientData, int) {}
int getHandleProc(ClientData, int, ClientData*) { return TCL_ERROR; }

Tcl_ChannelType consoleChannelType = {
    const_cast<char*>("surfpathConsole"), TCL_CHANNEL_VERSION_5, closeProc, inputProc, outputProc, nullptr, nullptr,
    nullptr, watchProc, getHandleProc, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr};

void replace(int which, int tclName, char const* name, HxConsoleOutput* console) {
    ConsoleStream& stream = theStreams[which];
    stream.console = console;
    stream.isError = tclName == TCL_STDERR;
    stream.terminal = Tcl_GetStdChannel(tclName);
    if (stream.terminal) Tcl_RegisterChannel(nullptr, stream.terminal);  // kept for uninstall
    stream.channel = Tcl_CreateChannel(&consoleChannelType, name, &stream, TCL_WRITABLE);
    Tcl_SetChannelOption(nullptr, stream.channel, "-buffering", "line");
    Tcl_SetStdChannel(stream.channel, tclName);
    // `puts` finds "stdout" through the standard channel, which must be known to the interpreter.
    Tcl_RegisterChannel(HxInterpreter::getTheInterpreter().getTclInterp(), stream.channel);
}

void restore(int which, int tclName) {
    ConsoleStream& stream = theStreams[which];
    if (!stream.channel) return;
    Tcl_Flush(stream.channel);
    Tcl_SetStdChannel(stream.terminal, tclName);
    Tcl_UnregisterChannel(HxInterpreter::getTheInterpreter().getTclInterp(), stream.channel);
    stream.channel = nullptr;
    stream.pending.clear();
}
}  // namespace

void HxTclConsoleChannel::install(HxConsoleOutput* console) {
    replace(0, TCL_STDOUT, "consoleout", console);
    replace(1, TCL_STDERR, "consoleerr", console);
}

void HxTclConsoleChannel::uninstall() {
    restore(0, TCL_STDOUT);
    restore(1, TCL_STDERR);
}
