#pragma once

#include <zlib.h>

#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>

namespace FendaMaestros::testing {

/// The members of a zip archive by name, unpacked and checked against their sizes and sums.
class Archive {
public:
    explicit Archive(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        bytes_.assign(std::istreambuf_iterator<char>(file), {});
        const auto end = bytes_.rfind("PK\x05\x06");
        if (end == std::string::npos) throw std::runtime_error(path + " is no archive");
        std::size_t at = number(end + 16, 4);
        for (std::size_t left = number(end + 10, 2); left > 0; --left) {
            const std::size_t nameSize = number(at + 28, 2);
            members_[bytes_.substr(at + 46, nameSize)] = unpack(at);
            at += 46 + nameSize + number(at + 30, 2) + number(at + 32, 2);
        }
    }

    const std::string& operator[](const std::string& name) const { return members_.at(name); }

private:
    std::size_t number(std::size_t at, int size) const {
        std::size_t value = 0;
        for (int i = size; i-- > 0;)
            value = value << 8 | static_cast<unsigned char>(bytes_.at(at + static_cast<std::size_t>(i)));
        return value;
    }

    std::string unpack(std::size_t entry) {
        const std::size_t local = number(entry + 42, 4);
        const std::size_t data = local + 30 + number(local + 26, 2) + number(local + 28, 2);
        std::string whole(number(entry + 24, 4), '\0');
        z_stream stream{};
        stream.next_in = reinterpret_cast<Bytef*>(&bytes_.at(data));
        stream.avail_in = static_cast<uInt>(number(entry + 20, 4));
        stream.next_out = reinterpret_cast<Bytef*>(whole.data());
        stream.avail_out = static_cast<uInt>(whole.size());
        inflateInit2(&stream, -MAX_WBITS);
        const int result = inflate(&stream, Z_FINISH);
        inflateEnd(&stream);
        const auto sum = crc32(0, reinterpret_cast<const Bytef*>(whole.data()), static_cast<uInt>(whole.size()));
        if (result != Z_STREAM_END || sum != number(entry + 16, 4)) throw std::runtime_error("damaged archive");
        return whole;
    }

    std::string bytes_;
    std::map<std::string, std::string> members_;
};

}  // namespace FendaMaestros::testing
