# The font family "Korvex Clear": made from Open Sans by tools/make_fonts.py, and compiled into the library under :/fonts.

find_path(TOLV_OPEN_SANS_FOLDER OpenSans-Regular.ttf
  PATHS /usr/share/fonts/truetype/open-sans /usr/share/fonts/open-sans /usr/share/fonts/google-opensans NO_DEFAULT_PATH
  DOC "Folder of the fonts that Korvex Clear is made from (Debian: fonts-open-sans)")
if(NOT TOLV_OPEN_SANS_FOLDER)
  message(FATAL_ERROR "Open Sans was not found: install fonts-open-sans, or set TOLV_OPEN_SANS_FOLDER")
endif()

# The system's own Python comes first: python3-fonttools belongs to it.
foreach(candidate /usr/bin/python3 python3)
  if(NOT TOLV_FONT_PYTHON)
    execute_process(COMMAND ${candidate} -c "import fontTools" RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
    if(result EQUAL 0)
      set(TOLV_FONT_PYTHON ${candidate} CACHE STRING "Python that has fontTools (Debian: python3-fonttools)")
    endif()
  endif()
endforeach()
if(NOT TOLV_FONT_PYTHON)
  message(FATAL_ERROR "No Python with fontTools was found: install python3-fonttools, or set TOLV_FONT_PYTHON")
endif()

set(font_names KorvexClear_Bd.ttf KorvexClear_BdIt.ttf KorvexClear_It.ttf KorvexClear_Rg.ttf korvex-clear-headline.woff
  korvex-clear-latin-bold.woff korvex-clear-latin-lite.woff korvex-clear-latin.woff)
set(font_folder ${CMAKE_BINARY_DIR}/fonts)
set(font_collection "<RCC><qresource prefix=\"/fonts\">\n")
foreach(name ${font_names})
  list(APPEND font_files ${font_folder}/${name})
  string(APPEND font_collection "<file compress-algo=\"none\">${name}</file>\n")
endforeach()
string(APPEND font_collection "</qresource></RCC>\n")
file(CONFIGURE OUTPUT ${font_folder}/tolv_fonts.qrc CONTENT "${font_collection}")

file(GLOB font_sources ${TOLV_OPEN_SANS_FOLDER}/OpenSans-*.ttf)
# They stand in the resource collection as they are, unpacked, because each of them is read when a tool starts.
add_custom_command(OUTPUT ${font_files}
  COMMAND ${TOLV_FONT_PYTHON} ${CMAKE_SOURCE_DIR}/tools/make_fonts.py ${TOLV_OPEN_SANS_FOLDER} ${font_folder}
  DEPENDS ${CMAKE_SOURCE_DIR}/tools/make_fonts.py ${font_sources}
  COMMENT "Making the fonts" VERBATIM)
# Who gets the library gets the fonts' licence with it.
install(FILES /usr/share/doc/fonts-open-sans/copyright DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME fonts-copyright OPTIONAL)
