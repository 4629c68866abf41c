#include "HxDSO.h"
#include "HxInterpreter.h"
#include "HxObject.h"
#include "HxObjectPool.h"
#include "HxResources.h"
#include "McTypeInfo.h"

#include <gtest/gtest.h>

namespace {

TEST(HxDSO, RefusesAnythingButABareFileName) {
    HxDSO dso;
    EXPECT_NE(dso.open("/usr/lib/libc.so.6"), 0);
    EXPECT_NE(std::string(dso.getError()).find("without a folder"), std::string::npos) << dso.getError();
    EXPECT_NE(dso.open("../lib/libhxcore.so"), 0);
    EXPECT_NE(dso.open(""), 0);
    EXPECT_NE(dso.open("libnosuchlibrary.so"), 0);
    EXPECT_NE(std::string(dso.getError()).find("libnosuchlibrary.so"), std::string::npos);
}

// The test plug-in is declared by a resource script in the folder named by SURFPATH_RESOURCES
// and loaded only when its class is first created.
TEST(HxDSO, PluginClassIsLoadedOnFirstCreate) {
    ASSERT_EQ(HxResources::loadAll(), 0);
    ASSERT_STREQ(HxResources::libraryOfClass("HxTestPluginModule"), "surfpath_testplugin");
    EXPECT_FALSE(HxDSO::isLoaded("libsurfpath_testplugin.so"));
    EXPECT_EQ(McTypeInfo::fromName("HxTestPluginModule"), nullptr) << "not registered before loading";

    McString result;
    ASSERT_EQ(HxInterpreter::getTheInterpreter().evalScript("create HxTestPluginModule plug", result), TCL_OK)
        << result;
    EXPECT_EQ(result, "plug");
    EXPECT_TRUE(HxDSO::isLoaded("libsurfpath_testplugin.so"));
    McTypeInfo const* type = McTypeInfo::fromName("HxTestPluginModule");
    ASSERT_NE(type, nullptr);
    EXPECT_STREQ(type->getParent()->getName(), "HxModule");
    EXPECT_TRUE(HxObjectPool::getTheObjectPool().findObject("plug")->isOfType(type));
    HxObjectPool::getTheObjectPool().removeAll();
}

TEST(HxDSO, CreateExplainsUnknownAndUncreatableClasses) {
    McString result;
    HxInterpreter& tcl = HxInterpreter::getTheInterpreter();
    EXPECT_EQ(tcl.evalScript("create NoSuchClass", result), TCL_ERROR);
    EXPECT_EQ(result, "cannot create NoSuchClass: unknown class \"NoSuchClass\"");
    EXPECT_EQ(tcl.evalScript("create HxModule", result), TCL_ERROR);
    EXPECT_NE(result.find("not a class of objects that can be created by name"), McString::npos) << result;
    tcl.evalScript("dso declare surfpath_missing_library HxMissingClass", result);
    EXPECT_EQ(tcl.evalScript("create HxMissingClass", result), TCL_ERROR);
    EXPECT_NE(result.find("libsurfpath_missing_library.so, which could not be loaded"), McString::npos) << result;
}

}  // namespace
