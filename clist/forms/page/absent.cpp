// Stands in for the page in a program that is built without it.
#include "clist/forms/forms.h"
#include "clist/forms/page.h"
#include "clist/messages.h"

namespace clist {

bool has_page() {
    return false;
}

static bool refuse() {
    say("--html: this clist was built without the page");
    return false;
}

bool write_page(const form_input& /*from*/, output& /*to*/) {
    return refuse();
}

bool join_pages(std::span<const joined_page> /*pages*/, const std::string& /*title*/,
                output& /*to*/) {
    return refuse();
}

}  // namespace clist
