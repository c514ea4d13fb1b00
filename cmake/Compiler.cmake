# Every target of the project is compiled by these rules.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_compile_options(
  $<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-Wall> $<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-Wextra>
  $<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-Wpedantic> $<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-Wconversion>
  $<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-Wshadow> $<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-Werror>
  $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc>)

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 suspects its own std::string of overlapping copies (its bug 105651).
  add_compile_options(-Wno-restrict)
endif()

if(PERCHLY_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(PERCHLY_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()
if(NOT APPLE)
  add_link_options(-Wl,--as-needed -Wl,-z,relro)
endif()
