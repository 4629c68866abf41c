#include "OperationTestSupport.h"
#include "PathEditUndoBuffer.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// An operation that logs its calls and its destruction.
class LoggingOperation : public PathOperation {
  public:
    LoggingOperation(std::string name, std::string& log) : mName(std::move(name)), mLog(log) {}
    ~LoggingOperation() override { mLog += "~" + mName + " "; }
    bool exec() override { return true; }
    void undo() override { mLog += "undo" + mName + " "; }
    void redo() override { mLog += "redo" + mName + " "; }

  private:
    std::string mName;
    std::string& mLog;
};

TEST(PathEditUndoBuffer, PushAfterUndoDiscardsTheRedoTail) {
    std::string log;
    PathEditUndoBuffer buffer;
    buffer.push(new LoggingOperation("A", log));
    buffer.push(new LoggingOperation("B", log));
    buffer.undo();
    buffer.push(new LoggingOperation("D", log));
    EXPECT_EQ(log, "undoB ~B ") << "B is released and destroyed by the push";
    buffer.undo();
    buffer.undo();
    buffer.redo();
    EXPECT_EQ(log, "undoB ~B undoD undoA redoA ") << "A stays below D";
    log.clear();
    buffer.clear();
    EXPECT_EQ(log, "~A ~D ");
}

TEST(PathEditUndoBuffer, UndoAndRedoStopAtTheEndsOfTheHistory) {
    std::string log;
    PathEditUndoBuffer buffer;
    buffer.push(new LoggingOperation("A", log));
    buffer.redo();  // right after a push: nothing to redo
    buffer.undo();
    buffer.undo();  // nothing left to undo
    buffer.push(new LoggingOperation("B", log));  // after undoing everything
    buffer.push(nullptr);                         // recorded, and harmless to undo and redo
    buffer.undo();
    buffer.undo();
    buffer.redo();
    buffer.redo();
    buffer.redo();
    EXPECT_EQ(log, "undoA ~A undoB redoB ");
    buffer.clear();
    log.clear();
    buffer.undo();
    buffer.redo();
    EXPECT_EQ(log, "") << "a cleared buffer has nothing to undo or redo";
}

}  // namespace
