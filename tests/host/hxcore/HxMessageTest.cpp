// The message console. Reading Tcl variables, formatted evaluation and usage errors of the
// interpreter are used and checked by every command test.

#include "HxInterpreter.h"
#include "HxMessage.h"

#include <gtest/gtest.h>

namespace {

HxInterpreter& tcl() { return HxInterpreter::getTheInterpreter(); }

TEST(HxMessage, HeadlessQuestionAnswersFromTheTclVariable) {
    HxMessage* msg = HxMessage::getTheMsg();
    msg->startCapture();
    tcl().eval("catch {unset hx::questionAnswer}");
    EXPECT_EQ(msg->question("Delete all paths?", "Yes", "No", nullptr, -1, -1), 0) << "default is the first button";
    tcl().eval("namespace eval hx { set questionAnswer 1 }");
    EXPECT_EQ(msg->question("Delete all paths?", "Yes", "No", nullptr, -1, -1), 1);
    tcl().eval("unset hx::questionAnswer");
    McString console = msg->stopCapture();
    EXPECT_NE(console.find("Delete all paths? -> No"), McString::npos) << console;
}

TEST(HxMessage, ConsoleCaptureTakesPrintfAndErrorLines) {
    HxMessage* msg = HxMessage::getTheMsg();
    msg->startCapture();
    msg->printf("Warning: cannot connect points");
    msg->printf("%d nodes\n", 4);
    msg->error("no surface");
    EXPECT_EQ(msg->stopCapture(), "Warning: cannot connect points\n4 nodes\nError: no surface\n");
    EXPECT_FALSE(msg->isCapturing());
}

}  // namespace
