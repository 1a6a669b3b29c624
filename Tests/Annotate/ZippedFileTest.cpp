#include "Annotate/Model.h"
#include "Annotate/StepFile.h"
#include "Support/TemporaryDirectory.h"

#include <gtest/gtest.h>

#include <functional>
#include <zip.h>

namespace annotate {

namespace {

using orv::tests::contentOf;
using orv::tests::setContent;

const std::string packedModel =
    header + "#7=IFCWALL('0aaaaaaaaaaaaaaaaaaaaa',$,'A',$,$,$,$,$,$);" + std::string(200'000, ' ') + footer;

/// The names of files and what they hold.
using Files = std::vector<std::pair<std::string, std::string>>;

class ZippedFileTest : public ::testing::Test {
protected:
    void pack(const Files& files, zip_int32_t method = ZIP_CM_DEFLATE, zip_uint16_t encryption = ZIP_EM_NONE) const {
        std::filesystem::remove(path);
        zip_t* const archive = ::zip_open(path.string().c_str(), ZIP_CREATE, nullptr);
        ASSERT_NE(archive, nullptr);
        for (const auto& [name, content] : files) {
            zip_source_t* const source = ::zip_source_buffer(archive, content.data(), content.size(), 0);
            const auto place = static_cast<zip_uint64_t>(::zip_file_add(archive, name.c_str(), source, 0));
            EXPECT_EQ(::zip_set_file_compression(archive, place, method, 0), 0);
            EXPECT_EQ(::zip_file_set_encryption(archive, place, encryption, "secret"), 0);
        }
        EXPECT_EQ(::zip_close(archive), 0) << ::zip_strerror(archive);
    }

    /// The names of the objects, or why there are none, with the path left out.
    std::string shown() const {
        try {
            std::string names;
            const Model read = Model::read(path);
            for (const ModelObject& object : read.getObjects()) {
                names += object.name + ' ';
            }
            return names;
        } catch (const ModelError& error) {
            std::string text = error.what();
            const std::size_t begin = text.find(path.string());
            return begin == std::string::npos ? text : text.replace(begin, path.string().size(), "MODEL");
        }
    }

    orv::tests::TemporaryDirectory directory;
    const std::filesystem::path path = directory / "House.ifczip";
};

TEST_F(ZippedFileTest, isReadAsTheFileInIt) {
    const Files packed[] = {
        {{"House.ifc", packedModel}},
        {{"readme.txt", "x"}, {"models/HOUSE.IFC", packedModel}, {"__MACOSX/models/._HOUSE.IFC", "x"}}};
    for (const Files& files : packed) {
        for (const zip_int32_t method : {ZIP_CM_DEFLATE, ZIP_CM_STORE}) {
            pack(files, method);
            EXPECT_EQ(shown(), "A ");
        }
    }
    pack({{"House.ifc", header + std::string(200'000, ' ') + "\n#1=IFCWALL(" + footer}});
    EXPECT_EQ(shown(), "The model \"MODEL\" has a syntax error in line 9: ''' is missing. Export the model again, "
                       "as an IFC file of IFC2X3, IFC4 or later.");
}

TEST_F(ZippedFileTest, isRefusedInASentenceWhereItIsNotOne) {
    const std::pair<Files, std::string> refused[] = {
        {{{"notes.txt", packedModel}}, "without an .ifc file in it. Give an IFC file, or one packed alone."},
        {{{"a.ifc", packedModel}, {"b.ifc", packedModel}, {"c.ifc", packedModel}},
         "with several .ifc files, a.ifc and b.ifc among them. Unpack it, and give one of them."},
    };
    for (const auto& [files, reason] : refused) {
        pack(files);
        EXPECT_EQ(shown(), "The model \"MODEL\" is a zip archive " + reason);
    }
    pack({{"House.ifc", packedModel}}, ZIP_CM_DEFLATE, ZIP_EM_AES_256);
    EXPECT_EQ(shown(),
              "The model \"MODEL\" is a zip archive that is encrypted. Unpack it, and give the .ifc file in it.");
}

TEST_F(ZippedFileTest, isRefusedWhereItIsDamagedOrSaysWhatCannotBe) {
    const auto inDirectory = [](const std::string& archive, std::size_t offset) {
        return archive.rfind("PK\1\2") + offset; // of its one entry
    };
    constexpr std::size_t ownMethod = 8; // at the entry itself
    constexpr std::size_t method = 10;
    constexpr std::size_t size = 24;
    const std::string damaged = "that is cut off or damaged";
    const std::pair<std::function<void(std::string&)>, std::string> changes[] = {
        {[](std::string& archive) { archive.resize(archive.size() / 2); }, damaged + ". Fetch it again."},
        {[](std::string& archive) { archive.resize(archive.size() - 1); }, damaged + ". Fetch it again."},
        {[](std::string& archive) { archive.resize(4); }, damaged + ". Fetch it again."},
        {[](std::string& archive) { archive[archive.find("IFCWALL")] = 'J'; },
         damaged + " (CRC error). Fetch it again."},
        {[](std::string& archive) { archive[archive.find("ISO-10303-21")] = 'J'; },
         damaged + " (CRC error). Fetch it again."},
        {[&](std::string& archive) { archive[inDirectory(archive, size) + 2] = '\0'; },
         damaged + " (It holds more than it says). Fetch it again."},
        {[&](std::string& archive) { archive[inDirectory(archive, size) + 3] = '\x7f'; },
         "that says to hold more than 200 times its size, as no IFC file does. Pack it again, or give the .ifc file "
         "itself."},
        {[&](std::string& archive) { archive[inDirectory(archive, method)] = archive[ownMethod] = 98; },
         "that can't be unpacked (Compression method not supported). Pack it again, or give the .ifc file itself."},
    };
    for (const auto& [change, reason] : changes) {
        pack({{"House.ifc", packedModel}}, ZIP_CM_STORE);
        std::string archive = contentOf(path);
        change(archive);
        setContent(path, archive);
        EXPECT_EQ(shown(), "The model \"MODEL\" is a zip archive " + reason);
    }
}

} // namespace
} // namespace annotate
