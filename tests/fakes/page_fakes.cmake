# The page in memory, with a real tree, and the main window around it.
target_sources(kitbay_fakes PRIVATE
  fake_dom.cpp fake_html_document.cpp fake_html_node.cpp fake_html_parser.cpp fake_html_text.cpp
  fake_style.cpp)
target_link_libraries(kitbay_fakes PRIVATE Kitbay::gumbo)
