#pragma once

#include "Annotate/CommandTest.h"

#include <string>
#include <vector>

namespace annotate {

// Objects of the house.
constexpr const char* wallOfHouse = "1jXyBr6EAquR0PHYXIrQ4_";
constexpr const char* doorOfHouse = "2b_TX4KeSUsSwjWBToxytC";
constexpr const char* projectOfHouse = "0LeYZ57GppGnMF4TCfOPic";

/// Runs annotate on the house.
class HouseTest : public CommandTest {
protected:
    Outcome runOn(const std::string& storeFile, std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), HOUSE);
        arguments.insert(arguments.end(), {"--store", storeFile});
        return run(arguments);
    }
};

} // namespace annotate
