#include "HxInterpreter.h"
#include "HxMessage.h"

#include <gtest/gtest.h>

namespace {

HxInterpreter& tcl() { return HxInterpreter::getTheInterpreter(); }

TEST(HxInterpreter, GetVarReadsNamespacedVariablesAndNullWhenUnset) {
    McString result;
    ASSERT_EQ(tcl().evalScript("namespace eval hxtest { set editorTypes {Vertex Generic} }", result), TCL_OK);
    ASSERT_NE(tcl().getVar("hxtest::editorTypes"), nullptr);
    EXPECT_STREQ(tcl().getVar("hxtest::editorTypes"), "Vertex Generic");
    EXPECT_EQ(tcl().getVar("hxtest::nothing"), nullptr);
}

TEST(HxInterpreter, FormattedEvaluationReturnsTheResultText) {
    tcl().eval("namespace eval hxtest { set list {a {b c} d} }");
    EXPECT_STREQ(tcl().eval("lindex $%s %d", "hxtest::list", 1), "b c");
    EXPECT_EQ(tcl().lastCode(), TCL_OK);
    EXPECT_STREQ(tcl().eval("llength $%s", "hxtest::list"), "3");
    tcl().eval("error {went wrong}");
    EXPECT_EQ(tcl().lastCode(), TCL_ERROR);
    EXPECT_STREQ(tcl().eval("string length %s", "x"), "1") << "an error does not stick";
}

TEST(HxInterpreter, CmdErrorSetsAUsageMessageAndReturnsTheErrorCode) {
    Tcl_Interp* interp = tcl().getTclInterp();
    EXPECT_EQ(cmdError(interp, HX_CMD_WRONG_ARGS, "addCP PATH X Y Z"), TCL_ERROR);
    EXPECT_STREQ(Tcl_GetStringResult(interp), "wrong # args: should be \"addCP PATH X Y Z\"");
    EXPECT_EQ(cmdError(interp, HX_CMD_BAD_VALUE, "tolerance must be positive"), TCL_ERROR);
    EXPECT_STREQ(Tcl_GetStringResult(interp), "bad value: tolerance must be positive");
    Tcl_VaSetResult(interp, "%d paths, %.1f long", 3, 2.5);
    EXPECT_STREQ(Tcl_GetStringResult(interp), "3 paths, 2.5 long");
}

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
