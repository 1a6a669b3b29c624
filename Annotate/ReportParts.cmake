# Makes the C++ file OUTPUT of the files in DIRECTORY: the values that ReportParts.h declares.

# The digest of a text in the form in which a Content-Security-Policy names it, which is base 64.
function(digest_of text result)
    set(letters "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
    string(SHA256 digits "${text}")
    set(digest "")
    foreach(start RANGE 0 60 6) # three bytes at a time, of which the last is none
        string(SUBSTRING "${digits}00" ${start} 6 group)
        foreach(shift 18 12 6 0)
            math(EXPR place "(0x${group} >> ${shift}) & 63")
            string(SUBSTRING "${letters}" ${place} 1 letter)
            string(APPEND digest "${letter}")
        endforeach()
    endforeach()
    string(REGEX REPLACE ".$" "=" digest "${digest}")
    set(${result} "sha256-${digest}" PARENT_SCOPE)
endfunction()

set(style "")
foreach(part Page Charts Listings Media) # the last one has its say over the others
    file(READ "${DIRECTORY}/${part}.css" rules)
    string(APPEND style "${rules}")
endforeach()
file(READ "${DIRECTORY}/Report.js" script)
digest_of("${style}" style_digest)
digest_of("${script}" script_digest)
file(WRITE "${OUTPUT}" "#include \"Annotate/ReportParts.h\"

namespace annotate {

constinit const std::string_view reportStyle = R\"text(${style})text\";
constinit const std::string_view reportStyleDigest = \"${style_digest}\";
constinit const std::string_view reportScript = R\"text(${script})text\";
constinit const std::string_view reportScriptDigest = \"${script_digest}\";

} // namespace annotate
")
