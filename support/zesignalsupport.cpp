// Reports of internal failures. The interlister prints the support text after an
// exception that nobody handled.
#include "support/zesignalsupport.h"

const char* support_message_text() {
    return "This is caused by a defect in the Ze C Source Interlister.\n"
           "Ze Customer Support may be able to suggest a workaround to avoid this.\n"
           "\n"
           "Upgrading to the newest version of the compiler may fix this problem.\n"
           "\n"
           "Contact Ze in the Ze Developer Exchange support forums at https://support.ze.example "
           "under\n"
           "\"Development Tools\", \"Ze C/C++ Compiler\".  See the link titled\n"
           "\"Submitting an issue\".\n"
           "\n"
           "We need to see this ENTIRE error message and a complete, reproducible\n"
           "test case including ALL of the command-line options.\n"
           "\n";
}
