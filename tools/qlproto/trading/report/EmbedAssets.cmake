# Turns files into one C++ source, each as a raw string: cmake -D SOURCE=folder -D FILES=a;b -D OUTPUT=source -P this
set(QL_REPORT_ASSETS "")
foreach(file IN LISTS FILES)
    file(READ ${SOURCE}/${file} text)
    string(APPEND QL_REPORT_ASSETS "    {\"${file}\", R\"=====(${text})=====\"},\n")
endforeach()
configure_file(${SOURCE}/Assets.cpp.in ${OUTPUT} @ONLY)
