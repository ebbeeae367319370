# Files, registry, clock, version resources and desktop.
target_sources(kitbay_fakes PRIVATE
  disk_files.cpp memory_file_system_object.cpp memory_files.cpp memory_registry.cpp recording_desktop.cpp
  recording_libraries.cpp windows_path.cpp zip_bytes.cpp)
target_link_libraries(kitbay_fakes PRIVATE ZLIB::ZLIB)
