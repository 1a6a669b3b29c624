#include "Annotate/Model.h"

#include "Annotate/StepString.h"
#include "FoundationClasses/IfcClass.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdlib.h>
#include <string>
#include <string_view>
#include <vector>

using namespace std::string_literals;

namespace annotate {

namespace {

const std::string header = "ISO-10303-21;\nHEADER;\nFILE_DESCRIPTION((''),'2;1');\nFILE_SCHEMA(('IFC4'));\nENDSEC;\n";
const std::string footer = "ENDSEC;\nEND-ISO-10303-21;\n";
const std::string wall = "#1=IFCWALL('0aaaaaaaaaaaaaaaaaaaaa',$,'A',$,$,$,$,$,$);";

std::string fileOf(const std::string& statements) {
    return header + "DATA;\n" + statements + "\n" + footer;
}

/// A directory of its own for the files of one test.
class ModelTest : public testing::Test {
protected:
    ModelTest() {
        std::string pattern = (std::filesystem::temp_directory_path() / "ModelTest-XXXXXX").string();
        directory = ::mkdtemp(pattern.data());
    }
    ~ModelTest() override { std::filesystem::remove_all(directory); }

    Model read(const std::string& content) const {
        std::ofstream(directory / "a.ifc", std::ios::binary) << content;
        return Model::read(directory / "a.ifc");
    }

    std::string errorOf(const std::filesystem::path& path) const {
        try {
            Model::read(path);
        } catch (const ModelError& error) {
            return error.what();
        }
        return "no error";
    }

    std::filesystem::path directory;
};

/// One line for each object: id, class, GlobalId, name.
std::string listOf(const Model& model) {
    std::string list;
    for (const ModelObject& object : model.getObjects()) {
        list += std::to_string(object.id) + ' ' + std::string(object.ifcClass->name) + ' ' + object.globalId + ' ' +
                object.name + '\n';
    }
    return list;
}
