# cmake -DINPUT=... -DOUTPUT=... -P Embed.cmake
#
# Writes a C++ source with the bytes of the page, for page_template(). Bytes, not one
# string: no compiler need take one of this length.
file(READ ${INPUT} bytes HEX)
string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
string(REGEX REPLACE "(................................................................................)" "\\1\n" bytes "${bytes}")
file(WRITE ${OUTPUT} "#include \"clist/forms/page/template.h\"

static constexpr char bytes[] = {
${bytes}
};

std::string_view clist::page::page_template() {
    return {bytes, sizeof bytes};
}
")
