# velmor_add_test(NAME SOURCES file... LIBS target...)
# One Qt Test program, registered with CTest under its own name.
function(velmor_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE Qt6::Test ${ARG_LIBS})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    # Each test keeps its user settings in a folder of its own, never the
    # developer's, lists none of the machine's own serial ports (tests run in
    # parallel and must not meet over a real port) and records no history:
    # a test of the history gives its own store.
    ENVIRONMENT "VELMOR_SYSTEM_PORTS=none;VELMOR_HISTORY=off;QT_QPA_PLATFORM=offscreen;ASAN_OPTIONS=detect_leaks=1;UBSAN_OPTIONS=print_stacktrace=1;XDG_CONFIG_HOME=${CMAKE_BINARY_DIR}/test-settings/${name}")
endfunction()
