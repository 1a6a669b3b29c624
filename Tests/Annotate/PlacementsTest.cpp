#include "Annotate/Placements.h"

#include "Annotate/Model.h"
#include "Annotate/ModelDetails.h"
#include "Annotate/StepFile.h"
#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace annotate {
namespace {

using orv::tests::setContent;

/// A wall whose placement is #10, at (1, 2, 3) unless the case says otherwise.
const std::string placedWall = "#1=IFCWALL('w',$,'W',$,$,#10,$,$,$);#40=IFCCARTESIANPOINT((1.,2.,3.));";

TEST(PlacementsTest, followTheChainOfLocalPlacements) {
    struct Case {
        const char* statements;
        const char* place;
    };
    const Case cases[] = {
        {"#10=IFCLOCALPLACEMENT($,#20);#20=IFCAXIS2PLACEMENT3D(#40,$,$);", "1 2 3"},
        {"#10=IFCLOCALPLACEMENT(#11,#20);#20=IFCAXIS2PLACEMENT3D(#40,$,$);#11=IFCLOCALPLACEMENT($,#21);"
         "#21=IFCAXIS2PLACEMENT3D(#41,$,$);#41=IFCCARTESIANPOINT((10.,0.,-1.));",
         "11 2 2"},
        // What it is within is turned by a quarter: its x is the y of the model.
        {"#10=IFCLOCALPLACEMENT(#11,#20);#20=IFCAXIS2PLACEMENT3D(#40,$,$);#11=IFCLOCALPLACEMENT($,#21);"
         "#21=IFCAXIS2PLACEMENT3D(#41,#50,#51);#41=IFCCARTESIANPOINT((10.,0.,0.));#50=IFCDIRECTION((0.,0.,1.));"
         "#51=IFCDIRECTION((0.,1.,0.));",
         "8 1 3"},
        // It lies: its z is the x of the model; the reference isn't across the axis, and too long.
        {"#10=IFCLOCALPLACEMENT(#11,#20);#20=IFCAXIS2PLACEMENT3D(#40,$,$);#11=IFCLOCALPLACEMENT($,#21);"
         "#21=IFCAXIS2PLACEMENT3D(#41,#50,#51);#41=IFCCARTESIANPOINT((0.,0.,0.));#50=IFCDIRECTION((2.,0.,0.));"
         "#51=IFCDIRECTION((5.,7.,0.));",
         "3 1 2"},
        // Within one of two dimensions.
        {"#10=IFCLOCALPLACEMENT(#11,#20);#20=IFCAXIS2PLACEMENT3D(#40,$,$);#11=ifclocalplacement($,#21);"
         "#21=IFCAXIS2PLACEMENT2D(#41,#51);#41=IFCCARTESIANPOINT((10.,20.));#51=IFCDIRECTION((0.,-1.));",
         "12 19 3"},
        {"#10=IFCLOCALPLACEMENT($,#20);#20=IFCAXIS2PLACEMENT3D(#40,$,$);#90=IFCPROJECT('p',$,'P',$,$,$,$,$,#91);"
         "#91=IFCUNITASSIGNMENT((#92));#92=IFCSIUNIT(*,.LENGTHUNIT.,.MILLI.,.METRE.);",
         "0.001 0.002 0.003"},
        {"#10=IFCLOCALPLACEMENT(#11,#20);#20=IFCAXIS2PLACEMENT3D(#40,$,$);#11=IFCLOCALPLACEMENT(#10,#20);", "none"},
        {"#10=IFCLOCALPLACEMENT(#99,#20);#20=IFCAXIS2PLACEMENT3D(#40,$,$);", "none"},
        {"#10=IFCLOCALPLACEMENT($,#20);#20=IFCAXIS2PLACEMENT3D(#99,$,$);", "none"},
        {"#10=IFCLOCALPLACEMENT($,#20);#20=IFCAXIS2PLACEMENT3D(#41,$,$);#41=IFCCARTESIANPOINT((1.,2.,3.,4.));", "none"},
        {"#10=IFCGRIDPLACEMENT(#20,$);", "none"},
        {"", "none"},
    };
    const orv::tests::TemporaryDirectory directory;
    for (const Case& each : cases) {
        const std::string file = (directory / "a.ifc").string();
        setContent(file, header + placedWall + each.statements + footer);
        const ModelDetails details = ModelDetails::read(file);
        std::string place = "none";
        for (const auto& [id, point] : placesOf(file, details.getUnits(), {1})) {
            std::ostringstream text;
            text << point.x << ' ' << point.y << ' ' << point.z;
            place = text.str();
        }
        EXPECT_EQ(place, each.place) << each.statements;
    }
}

TEST(PlacementsTest, areRefusedWhereAStatementIsMalformed) {
    const orv::tests::TemporaryDirectory directory;
    const std::string file = (directory / "a.ifc").string();
    setContent(file, header + placedWall + footer);
    const ModelDetails details = ModelDetails::read(file);
    setContent(file, header + placedWall + "#10=IFCLOCALPLACEMENT($,#20);#20=IFCAXIS2PLACEMENT3D(#40,,);" + footer);
    EXPECT_THROW(placesOf(file, details.getUnits(), {1}), ModelError);
}

} // namespace
} // namespace annotate
