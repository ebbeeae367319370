#include "fakes/zip_bytes.h"

#include <zlib.h>

#include <stdexcept>

namespace kitbay::fakes {
namespace {

constexpr std::uint16_t kVersion = 20;
constexpr std::uint16_t kUtf8Flag = 0x0800;
constexpr std::uint16_t kDeflated = 8;

void Append16(std::string& to, std::size_t number) {
  to.push_back(static_cast<char>(number & 0xFFU));
  to.push_back(static_cast<char>((number >> 8U) & 0xFFU));
}

void Append32(std::string& to, std::size_t number) {
  Append16(to, number & 0xFFFFU);
  Append16(to, (number >> 16U) & 0xFFFFU);
}

/// Without the header and the checksum of zlib's own format.
std::string Deflated(const std::string& bytes) {
  z_stream stream{};
  deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL,
               Z_DEFAULT_STRATEGY);
  std::string deflated(deflateBound(&stream, bytes.size()), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(deflated.data());
  stream.avail_out = static_cast<uInt>(deflated.size());
  const int result = deflate(&stream, Z_FINISH);
  deflated.resize(stream.total_out);
  deflateEnd(&stream);
  if (result != Z_STREAM_END) {
    throw std::logic_error("nothing to deflate with");
  }
  return deflated;
}

/// The fields that are the same before an entry and in the directory, from the version needed to
/// the length of the name.
std::string SharedFields(const ZipFile& file, std::size_t compressed_size,
                         std::size_t name_length) {
  const uLong crc = crc32(0, reinterpret_cast<const Bytef*>(file.bytes.data()),
                          static_cast<uInt>(file.bytes.size()));
  std::string fields;
  Append16(fields, kVersion);
  Append16(fields, kUtf8Flag);
  Append16(fields, file.declared_method.value_or(file.deflated ? kDeflated : 0));
  Append32(fields, 0x5B756E2AU);  // a day and a time
  Append32(fields, file.declared_crc.value_or(static_cast<std::uint32_t>(crc)));
  Append32(fields, file.declared_compressed_size.value_or(compressed_size));
  Append32(fields, file.declared_size.value_or(file.bytes.size()));
  Append16(fields, name_length);
  return fields;
}

}  // namespace

std::string ZipOf(const std::vector<ZipFile>& files) {
  std::string archive;
  std::string directory;
  for (const ZipFile& file : files) {
    const std::string data = file.deflated ? Deflated(file.bytes) : file.bytes;
    const std::string local_name = file.local_name.value_or(file.name);
    const std::size_t place = archive.size();
    archive += "PK\x03\x04" + SharedFields(file, data.size(), local_name.size());
    Append16(archive, 0);  // no extra fields
    archive += local_name + data;

    directory += "PK\x01\x02";
    Append16(directory, kVersion);
    directory += SharedFields(file, data.size(), file.name.size());
    Append16(directory, file.extra.size());
    Append16(directory, 0);  // no comment
    Append16(directory, 0);  // the first disk
    Append16(directory, 0);
    Append32(directory, 0);
    Append32(directory, place);
    directory += file.name + file.extra;
  }
  const std::size_t directory_place = archive.size();
  archive += directory + "PK\x05\x06";
  Append32(archive, 0);  // one disk
  Append16(archive, files.size());
  Append16(archive, files.size());
  Append32(archive, directory.size());
  Append32(archive, directory_place);
  Append16(archive, 0);  // no comment
  return archive;
}

}  // namespace kitbay::fakes
