# GoogleTest from the sources of Debian's package "googletest": no package has it built for Windows.
if(NOT TARGET GTest::gtest)
  find_path(RWS_GTEST_SOURCE NAMES CMakeLists.txt PATHS /usr/src/googletest/googletest
            NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
  add_subdirectory(${RWS_GTEST_SOURCE} ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
endif()
set(GTest_FOUND TRUE)
