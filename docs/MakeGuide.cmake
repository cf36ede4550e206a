# cmake -DCMARK=cmark-gfm -DOUT=FOLDER -DPAGES=A.md;B.md -DPICTURES=A.png -P MakeGuide.cmake
#
# Makes HTML pages of Markdown files. Each heading gets the id that code hosting sites give it, so that links work in both.
# For every anchor <a id="NAME"> a page go/NAME.html leads to it: the program opens that page.
cmake_minimum_required(VERSION 3.25)

file(READ ${CMAKE_CURRENT_LIST_DIR}/guide/frame.html frame)
file(REMOVE_RECURSE ${OUT})
file(MAKE_DIRECTORY ${OUT}/go ${OUT}/images)
file(COPY ${PICTURES} DESTINATION ${OUT}/images)

# Gives each heading of the body an id: lower case, without punctuation, with a dash for each blank.
function(add_heading_ids)
  string(REGEX MATCHALL "<h[1-6]>[^\n]*</h[1-6]>" headings "${body}")
  foreach(heading IN LISTS headings)
    string(REGEX REPLACE "<[^>]*>" "" id "${heading}")
    string(REGEX REPLACE "&[a-z]+;" "" id "${id}")
    string(TOLOWER "${id}" id)
    string(REGEX REPLACE "[^a-z0-9 _-]" "" id "${id}")
    string(REPLACE " " "-" id "${id}")
    string(REGEX REPLACE "^<(h[1-6])>" "<\\1 id=\"${id}\">" with_id "${heading}")
    string(REPLACE "${heading}" "${with_id}" body "${body}")
  endforeach()
  set(body "${body}" PARENT_SCOPE)
endfunction()

foreach(page IN LISTS PAGES)
  get_filename_component(name ${page} NAME_WLE)
  execute_process(COMMAND ${CMARK} --unsafe --validate-utf8 -e table ${page} OUTPUT_VARIABLE body COMMAND_ERROR_IS_FATAL ANY)
  # Semicolons and square brackets have a meaning in lists of CMake.
  string(REPLACE ";" "&semi;" body "${body}")
  string(REPLACE "[" "&lsqb;" body "${body}")
  string(REPLACE "]" "&rsqb;" body "${body}")
  add_heading_ids()
  string(REGEX REPLACE "href=\"(\\.\\./|guide/)?([a-z0-9_-]+)\\.md([\"#])" "href=\"\\2.html\\3" body "${body}")
  string(REPLACE "src=\"../images/" "src=\"images/" body "${body}")
  string(REGEX MATCH "<h1[^>]*>([^\n]*)</h1>" title "${body}")
  set(title "${CMAKE_MATCH_1}")
  string(REGEX MATCHALL "<a id=\"[A-Za-z0-9-]+\"" anchors "${body}")
  foreach(anchor IN LISTS anchors)
    string(REGEX REPLACE "<a id=\"(.*)\"" "\\1" anchor "${anchor}")
    if(EXISTS ${OUT}/go/${anchor}.html)
      message(FATAL_ERROR "${page}: the anchor ${anchor} occurs twice in the guide.")
    endif()
    file(WRITE ${OUT}/go/${anchor}.html "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"><title>ARVO guide</title>\n"
      "<meta http-equiv=\"refresh\" content=\"0;url=../${name}.html#${anchor}\"></head>\n"
      "<body><a href=\"../${name}.html#${anchor}\">ARVO guide</a></body></html>\n")
  endforeach()
  string(REPLACE "@TITLE@" "${title}" html "${frame}")
  string(REPLACE "@BODY@" "${body}" html "${html}")
  string(REPLACE "&semi;" ";" html "${html}")
  string(REPLACE "&lsqb;" "[" html "${html}")
  string(REPLACE "&rsqb;" "]" html "${html}")
  file(WRITE ${OUT}/${name}.html "${html}")
endforeach()
