// The interlister's process-wide state.
#include "interlist/state.h"

FILE* ASSY = nullptr;
FILE* LIST = nullptr;
FILE* CFILE = nullptr;

static char assy_window[65536];
static char cfile_window[65536];
input_stream assy_input{.window = assy_window, .size = sizeof assy_window};
input_stream cfile_input{.window = cfile_window, .size = sizeof cfile_window};

static char gathered[65536];
output_stream list_output{.buffer = gathered, .size = sizeof gathered};

char assy_file_name[buffer_size];
char temp_file_name[buffer_size];
char in_rec[buffer_size];
char last_symbol[buffer_size];
char curr_seen_file_name[buffer_size];
char curr_open_file_name[buffer_size];

int quiet_mode = 0;
int skip_blanks = 0;
int preserve_sp = 0;
int cut_colm = 0;
int no_warnings = 0;
unsigned int curr_line = 0;
int func_line = 0;
int in_comment = 0;
int name_width = 0;
int prev_name_width = 0;
bool assembly_has_no_more_positions = false;
const char* prog_name = nullptr;
