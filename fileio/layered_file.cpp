// SPDX-License-Identifier: GPL-3.0-or-later
#include "fileio/layered_file.h"

#include "fileio/container_file.h"
#include "fileio/layered_messages.h"
#include "fileio/layered_sections.h"

namespace wib {

std::optional<std::string> WriteLayeredFile(const std::string& path,
                                            const LayeredPicture& picture) {
    return WriteContainerFile(
        path, kLayeredMagic, picture.width, picture.height,
        [&](ContainerWriter& container) { AddPictureSections(container, picture); });
}

bool EncodeLayered(const LayeredPicture& picture, ByteSink& sink) {
    ContainerWriter container(sink, kLayeredMagic, picture.width, picture.height);
    AddPictureSections(container, picture);
    return container.finish();
}

ReadResult<LayeredPicture> DecodeLayered(std::span<const std::uint8_t> bytes) {
    return DecodeContainer<LayeredPicture>(bytes, kLayeredMagic, kLayeredWrongType,
                                           ReadPictureSections);
}

ReadResult<LayeredPicture> ReadLayeredFile(const std::string& path) {
    return ReadContainerFile<LayeredPicture>(path, DecodeLayered);
}

}  // namespace wib
