// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/fileio/ora_inspect.h"

#include <expat.h>
#include <gtest/gtest.h>
#include <png.h>
#include <zip.h>

#include <cstring>

namespace wib::testing::ora {

std::vector<ZipEntry> Unzip(const std::string& path) {
    int error = 0;
    zip_t* archive = zip_open(path.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, &error);
    EXPECT_NE(archive, nullptr) << "libzip error " << error;
    std::vector<ZipEntry> entries;
    if (archive == nullptr) {
        return entries;
    }
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        zip_stat_t stat;
        zip_stat_index(archive, static_cast<zip_uint64_t>(i), 0, &stat);
        ZipEntry entry;
        entry.name = stat.name;
        entry.stored = stat.comp_method == ZIP_CM_STORE;
        entry.data.resize(stat.size);
        zip_file_t* file = zip_fopen_index(archive, static_cast<zip_uint64_t>(i), 0);
        EXPECT_NE(file, nullptr);
        if (file != nullptr) {
            EXPECT_EQ(zip_fread(file, entry.data.data(), stat.size),
                      static_cast<zip_int64_t>(stat.size));
            zip_fclose(file);
        }
        entries.push_back(std::move(entry));
    }
    zip_discard(archive);
    return entries;
}

namespace {

struct XmlBuild {
    std::vector<XmlElement> open;
    XmlElement root;
};

void XMLCALL StartElement(void* data, const XML_Char* name, const XML_Char** attributes) {
    auto& build = *static_cast<XmlBuild*>(data);
    XmlElement element;
    element.name = name;
    for (int i = 0; attributes[i] != nullptr; i += 2) {
        element.attributes[attributes[i]] = attributes[i + 1];
    }
    build.open.push_back(std::move(element));
}

void XMLCALL EndElement(void* data, const XML_Char*) {
    auto& build = *static_cast<XmlBuild*>(data);
    XmlElement done = std::move(build.open.back());
    build.open.pop_back();
    if (build.open.empty()) {
        build.root = std::move(done);
    } else {
        build.open.back().children.push_back(std::move(done));
    }
}

}  // namespace

XmlElement ParseXml(const std::string& text) {
    XmlBuild build;
    XML_Parser parser = XML_ParserCreate("UTF-8");
    XML_SetUserData(parser, &build);
    XML_SetElementHandler(parser, StartElement, EndElement);
    const bool ok =
        XML_Parse(parser, text.data(), static_cast<int>(text.size()), XML_TRUE) == XML_STATUS_OK;
    XML_ParserFree(parser);
    return ok ? build.root : XmlElement{};
}

Image DecodePng(const std::vector<std::uint8_t>& file) {
    png_image png;
    std::memset(&png, 0, sizeof png);
    png.version = PNG_IMAGE_VERSION;
    Image image;
    if (!png_image_begin_read_from_memory(&png, file.data(), file.size())) {
        ADD_FAILURE() << png.message;
        return image;
    }
    png.format = PNG_FORMAT_RGBA;
    image.width = static_cast<int>(png.width);
    image.height = static_cast<int>(png.height);
    image.rgba.resize(PNG_IMAGE_SIZE(png));
    EXPECT_TRUE(png_image_finish_read(&png, nullptr, image.rgba.data(), 0, nullptr)) << png.message;
    return image;
}

std::vector<std::uint8_t> EncodePng(const Image& image) {
    png_image png;
    std::memset(&png, 0, sizeof png);
    png.version = PNG_IMAGE_VERSION;
    png.width = static_cast<png_uint_32>(image.width);
    png.height = static_cast<png_uint_32>(image.height);
    png.format = PNG_FORMAT_RGBA;
    png_alloc_size_t size = 0;
    EXPECT_TRUE(png_image_write_to_memory(&png, nullptr, &size, 0, image.rgba.data(), 0, nullptr));
    std::vector<std::uint8_t> file(size);
    EXPECT_TRUE(
        png_image_write_to_memory(&png, file.data(), &size, 0, image.rgba.data(), 0, nullptr));
    file.resize(size);
    return file;
}

void WriteZip(const std::string& path,
              const std::vector<std::pair<std::string, std::vector<std::uint8_t>>>& entries) {
    int error = 0;
    zip_t* archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, &error);
    ASSERT_NE(archive, nullptr);
    for (const auto& [name, data] : entries) {
        zip_source_t* source = zip_source_buffer(archive, data.data(), data.size(), 0);
        const zip_int64_t index = zip_file_add(archive, name.c_str(), source, 0);
        ASSERT_GE(index, 0);
        zip_set_file_compression(archive, static_cast<zip_uint64_t>(index),
                                 name == "mimetype" ? ZIP_CM_STORE : ZIP_CM_DEFLATE, 0);
    }
    // The buffers are read here, while `entries` still holds them.
    ASSERT_EQ(zip_close(archive), 0);
}

std::vector<std::uint8_t> Bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

void WriteOra(const std::string& path, const std::string& stackXml,
              const std::vector<std::pair<std::string, Image>>& pngs) {
    std::vector<std::pair<std::string, std::vector<std::uint8_t>>> entries = {
        {"mimetype", Bytes("image/openraster")}, {"stack.xml", Bytes(stackXml)}};
    for (const auto& [name, image] : pngs) {
        entries.emplace_back(name, EncodePng(image));
    }
    WriteZip(path, entries);
}

}  // namespace wib::testing::ora
