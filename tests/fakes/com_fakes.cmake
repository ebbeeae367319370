target_sources(kitbay_fakes PRIVATE
  fake_active_objects.cpp
  fake_com_server.cpp
  fake_suite_objects.cpp)
