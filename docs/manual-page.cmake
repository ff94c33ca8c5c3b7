# Makes one page of the manual: `cmake -D LOWDOWN=<program> -D SOURCE=<chapter.md> -D PAGE=<chapter.html>
# -D PREVIOUS=<name or nothing> -D NEXT=<name or nothing> -P manual-page.cmake`.

file(STRINGS ${SOURCE} title REGEX "^# " LIMIT_COUNT 1 ENCODING UTF-8)
string(REGEX REPLACE "^# " "" title "${title}")
get_filename_component(name ${SOURCE} NAME_WE)
if(NOT name STREQUAL "index")
    string(APPEND title " - Norvexa Editor")
endif()

execute_process(
    COMMAND ${LOWDOWN} -s -T html --parse-no-super --out-no-smarty -m title=${title} -m css=manual.css ${SOURCE}
    OUTPUT_VARIABLE html
    COMMAND_ERROR_IS_FATAL ANY)

# Chapters link to each other's sources, so that they can be read as they are.
string(REGEX REPLACE "href=\"([a-z-]+)\\.md([#\"])" "href=\"\\1.html\\2" html "${html}")

set(links)
if(PREVIOUS)
    list(APPEND links "<a href=\"${PREVIOUS}.html\">Back</a>")
endif()
if(NOT name STREQUAL "index")
    list(APPEND links "<a href=\"index.html\">Contents</a>")
endif()
if(NEXT)
    list(APPEND links "<a href=\"${NEXT}.html\">Next</a>")
endif()
list(JOIN links " " links)
set(navigation "<nav>${links}</nav>")

string(REPLACE "<html>" "<html lang=\"en\">" html "${html}")
string(REPLACE "<body>" "<body>\n${navigation}" html "${html}")
string(REPLACE "</body>" "${navigation}\n</body>" html "${html}")
# A wide table is scrolled on its own.
string(REPLACE "<table>" "<div class=\"table\"><table>" html "${html}")
string(REPLACE "</table>" "</table></div>" html "${html}")

file(WRITE ${PAGE} "${html}")
