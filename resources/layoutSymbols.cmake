# Turns the icon set's drawings into symbols that every status area and toolkit can recolour, and lays them
# out twice: icons/perchly-NAME-symbolic.svg for look-ups by icon name, symbols/NAME.svg for look-ups by symbol.
#   cmake -D source=FOLDER_OF_DRAWINGS -D share=FOLDER -P layoutSymbols.cmake

# The set draws in a box of 56 units and leaves up to 4 of them empty on each side. Where the drawing allows,
# 3 are cut off, which makes it fill a small icon.
set(box 56)
set(crop 3)

# Sets `result` to whether the path stays inside the cropped box. Only plain absolute paths are judged, by all
# their numbers (control points included); anything else keeps the whole box.
function(fits_cropped path transform result)
  set(${result} FALSE PARENT_SCOPE)
  set(dx 0)
  set(dy 0)
  if(transform MATCHES "^translate\\(([0-9]+)[ ,]+([0-9]+)\\)$")
    set(dx ${CMAKE_MATCH_1})
    set(dy ${CMAKE_MATCH_2})
  elseif(transform)
    return()
  endif()
  if(path MATCHES "[a-z-]" OR path MATCHES "(^|[^0-9])\\.[0-9]" OR path MATCHES "A")
    return()
  endif()
  # Which number is an x and which a y is not told apart: the smaller shift guards the lower edge, the larger
  # one the upper edge.
  if(dx LESS dy)
    set(least ${dx})
    set(most ${dy})
  else()
    set(least ${dy})
    set(most ${dx})
  endif()
  math(EXPR low "${crop} - ${least}")
  math(EXPR high "${box} - ${crop} - ${most}")
  string(REGEX MATCHALL "[0-9]+(\\.[0-9]+)?" numbers "${path}")
  foreach(number IN LISTS numbers)
    if(number LESS low OR number GREATER high)
      return()
    endif()
  endforeach()
  set(${result} TRUE PARENT_SCOPE)
endfunction()

file(GLOB drawings ${source}/*.svg)
if(NOT drawings)
  message(FATAL_ERROR "No drawings in ${source}: run scripts/bootstrap.")
endif()
file(REMOVE_RECURSE ${share}/symbols)
file(MAKE_DIRECTORY ${share}/symbols ${share}/icons)

math(EXPR inner "${box} - 2 * ${crop}")
foreach(drawing IN LISTS drawings)
  get_filename_component(name ${drawing} NAME_WE)
  file(READ ${drawing} text)
  if(NOT text MATCHES "<((path|polygon)[^>]*)/>")
    message(FATAL_ERROR "${drawing} is not drawn as expected.")
  endif()
  set(shape "${CMAKE_MATCH_1}")
  set(path "")
  set(transform "")
  if(shape MATCHES " (d|points)=\"([^\"]*)\"")
    set(path "${CMAKE_MATCH_2}")
  endif()
  if(shape MATCHES " transform=\"([^\"]*)\"")
    set(transform "${CMAKE_MATCH_1}")
  endif()
  fits_cropped("${path}" "${transform}" cropped)
  if(cropped)
    set(view "${crop} ${crop} ${inner} ${inner}")
  else()
    set(view "0 0 ${box} ${box}")
  endif()
  string(REGEX REPLACE "^(path|polygon)" "\\1 class=\"ColorScheme-Text\" fill=\"currentColor\"" shape "${shape}")
  file(WRITE ${share}/icons/perchly-${name}-symbolic.svg
    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"16\" height=\"16\" viewBox=\"${view}\">"
    "<style type=\"text/css\" id=\"current-color-scheme\">.ColorScheme-Text { color: #2e3436; }</style>"
    "<${shape}/></svg>\n")
  file(CREATE_LINK ../icons/perchly-${name}-symbolic.svg ${share}/symbols/${name}.svg SYMBOLIC)
endforeach()

# Last, so that it stands for a complete layout.
file(TOUCH ${share}/symbols/.complete)
