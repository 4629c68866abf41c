#include "PathEditAddCP.h"
#include "PathEditAddPath.h"
#include "PathEditClosePath.h"
#include "PathEditDeleteAllPaths.h"
#include "PathEditDeleteCP.h"
#include "PathEditDeletePaths.h"
#include "PathEditEntangle.h"
#include "PathEditFixIntersections.h"
#include "PathEditImportContours.h"
#include "PathEditInsertCP.h"
#include "PathEditMergePaths.h"
#include "PathEditMoveCP.h"
#include "PathEditOpenPath.h"
#include "PathEditPatchify.h"
#include "PathEditRetriangulate.h"
#include "PathEditReversePath.h"
#include "PathEditSelection.h"
#include "PathEditSnapNodes.h"
#include "PathEditUntangle.h"

#include <gtest/gtest.h>

#include <string>

namespace {

// Operations are known to the type registry by their class names but cannot be made by name.
TEST(OperationRegistration, EveryOperationIsRegisteredUnderItsNameBelowSinglePathOperation) {
    McTypeInfo const* types[] = {
        PathEditAddCP::getClassTypeId(),      PathEditInsertCP::getClassTypeId(),
        PathEditMoveCP::getClassTypeId(),     PathEditDeleteCP::getClassTypeId(),
        PathEditAddPath::getClassTypeId(),    PathEditDeletePaths::getClassTypeId(),
        PathEditDeleteAllPaths::getClassTypeId(), PathEditClosePath::getClassTypeId(),
        PathEditOpenPath::getClassTypeId(),   PathEditReversePath::getClassTypeId(),
        PathEditSelection::getClassTypeId(),  PathEditMergePaths::getClassTypeId(),
        PathEditFixIntersections::getClassTypeId(), PathEditEntangle::getClassTypeId(),
        PathEditUntangle::getClassTypeId(),   PathEditImportContours::getClassTypeId(),
        PathEditPatchify::getClassTypeId(),   PathEditSnapNodes::getClassTypeId(),
        PathEditRetriangulate::getClassTypeId(),
    };
    for (McTypeInfo const* type : types) {
        EXPECT_EQ(McTypeInfo::fromName(type->getName()), type);
        EXPECT_EQ(type->getParent(), SinglePathOperation::getClassTypeId()) << type->getName();
        EXPECT_FALSE(type->canCreate()) << type->getName();
        EXPECT_EQ(std::string(type->getName()).rfind("PathEdit", 0), 0u) << type->getName();
    }
    EXPECT_STREQ(SinglePathOperation::getClassTypeId()->getParent()->getName(), "PathOperation");
    EXPECT_EQ(PathOperation::getClassTypeId()->getParent(), McTypedObject::getClassTypeId());
    EXPECT_FALSE(SinglePathOperation::getClassTypeId()->canCreate());
}

}  // namespace
