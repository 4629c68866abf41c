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
    auto* a = new LoggingOperation("A", log);
    buffer.push(a);
    buffer.push(new LoggingOperation("B", log));
    buffer.undo();
    buffer.push(new LoggingOperation("D", log));
    EXPECT_EQ(log, "undoB ~B ") << "B is released and destroyed by the push";
    EXPECT_EQ(buffer.current, 1);
    ASSERT_EQ(buffer.operations.size(), 2);
    EXPECT_EQ(buffer.operations[0].ptr(), a);
    EXPECT_EQ(a->refCount(), 1);
    log.clear();
    buffer.clear();
    EXPECT_EQ(log, "~A ~D ");
    EXPECT_EQ(buffer.current, -1);
}

TEST(PathEditUndoBuffer, UndoAndRedoStopAtTheEndsOfTheHistory) {
    std::string log;
    PathEditUndoBuffer buffer;
    buffer.push(new LoggingOperation("A", log));
    buffer.redo();  // right after a push: nothing to redo
    buffer.undo();
    buffer.undo();  // nothing left to undo
    buffer.redo();
    buffer.redo();
    EXPECT_EQ(log, "undoA redoA ");
    EXPECT_EQ(buffer.current, 0);
    buffer.undo();
    buffer.push(new LoggingOperation("B", log));  // after undoing everything
    EXPECT_EQ(buffer.operations.size(), 1);
    EXPECT_EQ(buffer.current, 0);
    buffer.clear();
    log.clear();
    buffer.undo();
    buffer.redo();
    EXPECT_EQ(log, "") << "a cleared buffer has nothing to undo or redo";
}

TEST(PathEditUndoBuffer, AnOperationHeldElsewhereOutlivesTheBuffer) {
    std::string log;
    McHandle<PathOperation> keep = new LoggingOperation("A", log);
    {
        PathEditUndoBuffer buffer;
        buffer.push(keep);
        buffer.push(nullptr);  // recorded as a null handle
        EXPECT_EQ(buffer.operations.size(), 2);
        buffer.undo();         // undoing the null entry is harmless
        EXPECT_EQ(buffer.current, 0);
    }
    EXPECT_EQ(log, "");
    EXPECT_EQ(keep->refCount(), 1);
}

}  // namespace
