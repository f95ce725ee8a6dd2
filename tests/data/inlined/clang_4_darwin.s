	.section	__TEXT,__text,regular,pure_instructions
	.build_version macos, 12, 0
	.globl	_outer
	.p2align	2
_outer:
Lfunc_begin0:
	.file	1 "/src" "inlined.c"
	.loc	1 10 0
	.cfi_sections .debug_frame
	.cfi_startproc
	.loc	1 11 13 prologue_end
	str	w0, [x2]
Ltmp0:
	.loc	1 2 14
	mul	w8, w1, w1
Ltmp1:
	.loc	1 7 9
	madd	w8, w0, w0, w8
Ltmp2:
	.loc	1 12 33
	sub	w0, w8, #7
Ltmp3:
	.loc	1 12 5 is_stmt 0
	ret
Ltmp4:
Lfunc_end0:
	.cfi_endproc

	.section	__DWARF,__debug_loc,regular,debug
Lsection_debug_loc:
Ldebug_loc0:
.set Lset0, Lfunc_begin0-Lfunc_begin0
	.quad	Lset0
.set Lset1, Ltmp3-Lfunc_begin0
	.quad	Lset1
	.short	1
	.byte	80
.set Lset2, Ltmp3-Lfunc_begin0
	.quad	Lset2
.set Lset3, Lfunc_end0-Lfunc_begin0
	.quad	Lset3
	.short	4
	.byte	163
	.byte	1
	.byte	80
	.byte	159
	.quad	0
	.quad	0
	.section	__DWARF,__debug_abbrev,regular,debug
Lsection_abbrev:
	.byte	1
	.byte	17
	.byte	1
	.byte	37
	.byte	14
	.byte	19
	.byte	5
	.byte	3
	.byte	14
	.ascii	"\202|"
	.byte	14
	.byte	16
	.byte	23
	.byte	27
	.byte	14
	.ascii	"\341\177"
	.byte	25
	.byte	17
	.byte	1
	.byte	18
	.byte	6
	.byte	0
	.byte	0
	.byte	2
	.byte	46
	.byte	1
	.byte	3
	.byte	14
	.byte	58
	.byte	11
	.byte	59
	.byte	11
	.byte	39
	.byte	25
	.byte	73
	.byte	19
	.ascii	"\341\177"
	.byte	25
	.byte	32
	.byte	11
	.byte	0
	.byte	0
	.byte	3
	.byte	5
	.byte	0
	.byte	3
	.byte	14
	.byte	58
	.byte	11
	.byte	59
	.byte	11
	.byte	73
	.byte	19
	.byte	0
	.byte	0
	.byte	4
	.byte	36
	.byte	0
	.byte	3
	.byte	14
	.byte	62
	.byte	11
	.byte	11
	.byte	11
	.byte	0
	.byte	0
	.byte	5
	.byte	46
	.byte	1
	.byte	17
	.byte	1
	.byte	18
	.byte	6
	.ascii	"\347\177"
	.byte	25
	.byte	64
	.byte	24
	.byte	122
	.byte	25
	.byte	3
	.byte	14
	.byte	58
	.byte	11
	.byte	59
	.byte	11
	.byte	39
	.byte	25
	.byte	73
	.byte	19
	.byte	63
	.byte	25
	.ascii	"\341\177"
	.byte	25
	.byte	0
	.byte	0
	.byte	6
	.byte	5
	.byte	0
	.byte	2
	.byte	23
	.byte	3
	.byte	14
	.byte	58
	.byte	11
	.byte	59
	.byte	11
	.byte	73
	.byte	19
	.byte	0
	.byte	0
	.byte	7
	.byte	5
	.byte	0
	.byte	2
	.byte	24
	.byte	3
	.byte	14
	.byte	58
	.byte	11
	.byte	59
	.byte	11
	.byte	73
	.byte	19
	.byte	0
	.byte	0
	.byte	8
	.byte	29
	.byte	1
	.byte	49
	.byte	19
	.byte	17
	.byte	1
	.byte	18
	.byte	6
	.byte	88
	.byte	11
	.byte	89
	.byte	11
	.byte	87
	.byte	11
	.byte	0
	.byte	0
	.byte	9
	.byte	5
	.byte	0
	.byte	2
	.byte	24
	.byte	49
	.byte	19
	.byte	0
	.byte	0
	.byte	10
	.byte	15
	.byte	0
	.byte	73
	.byte	19
	.byte	0
	.byte	0
	.byte	0
	.section	__DWARF,__debug_info,regular,debug
Lsection_info:
Lcu_begin0:
.set Lset4, Ldebug_info_end0-Ldebug_info_start0
	.long	Lset4
Ldebug_info_start0:
	.short	4
.set Lset5, Lsection_abbrev-Lsection_abbrev
	.long	Lset5
	.byte	8
	.byte	1
	.long	0
	.short	12
	.long	28
	.long	38
.set Lset6, Lline_table_start0-Lsection_line
	.long	Lset6
	.long	40

	.quad	Lfunc_begin0
.set Lset7, Lfunc_end0-Lfunc_begin0
	.long	Lset7
	.byte	2
	.long	45
	.byte	1
	.byte	1

	.long	70

	.byte	1
	.byte	3
	.long	56
	.byte	1
	.byte	1
	.long	70
	.byte	0
	.byte	4
	.long	52
	.byte	5
	.byte	4
	.byte	2
	.long	58
	.byte	1
	.byte	5

	.long	70

	.byte	1
	.byte	3
	.long	73
	.byte	1
	.byte	5
	.long	70
	.byte	3
	.long	75
	.byte	1
	.byte	5
	.long	70
	.byte	0
	.byte	5
	.quad	Lfunc_begin0
.set Lset8, Lfunc_end0-Lfunc_begin0
	.long	Lset8

	.byte	1
	.byte	111

	.long	77
	.byte	1
	.byte	10

	.long	70


	.byte	6
.set Lset9, Ldebug_loc0-Lsection_debug_loc
	.long	Lset9
	.long	73
	.byte	1
	.byte	10
	.long	70
	.byte	7
	.byte	1
	.byte	81
	.long	75
	.byte	1
	.byte	10
	.long	70
	.byte	7
	.byte	1
	.byte	82
	.long	83
	.byte	1
	.byte	10
	.long	242
	.byte	8
	.long	77
	.quad	Ltmp0
.set Lset10, Ltmp2-Ltmp0
	.long	Lset10
	.byte	1
	.byte	12
	.byte	12
	.byte	9
	.byte	1
	.byte	80
	.long	89
	.byte	9
	.byte	1
	.byte	81
	.long	100
	.byte	8
	.long	46
	.quad	Ltmp0
.set Lset11, Ltmp1-Ltmp0
	.long	Lset11
	.byte	1
	.byte	7
	.byte	11
	.byte	9
	.byte	1
	.byte	81
	.long	58
	.byte	0
	.byte	0
	.byte	0
	.byte	10
	.long	70
	.byte	0
Ldebug_info_end0:
	.section	__DWARF,__debug_str,regular,debug
Linfo_string:
	.asciz	"Debian clang version 14.0.6"
	.asciz	"inlined.c"
	.asciz	"/"
	.asciz	"/src"
	.asciz	"square"
	.asciz	"int"
	.asciz	"x"
	.asciz	"sum_of_squares"
	.asciz	"a"
	.asciz	"b"
	.asciz	"outer"
	.asciz	"result"
	.section	__DWARF,__apple_names,regular,debug
Lnames_begin:
	.long	1212240712
	.short	1
	.short	0
	.long	3
	.long	3
	.long	12
	.long	0
	.long	1
	.short	1
	.short	6
	.long	0
	.long	1
	.long	2
	.long	475982358
	.long	-1060520559
	.long	270123860
.set Lset12, LNames0-Lnames_begin
	.long	Lset12
.set Lset13, LNames1-Lnames_begin
	.long	Lset13
.set Lset14, LNames2-Lnames_begin
	.long	Lset14
LNames0:
	.long	45
	.long	1
	.long	212
	.long	0
LNames1:
	.long	58
	.long	1
	.long	178
	.long	0
LNames2:
	.long	77
	.long	1
	.long	112
	.long	0
	.section	__DWARF,__apple_objc,regular,debug
Lobjc_begin:
	.long	1212240712
	.short	1
	.short	0
	.long	1
	.long	0
	.long	12
	.long	0
	.long	1
	.short	1
	.short	6
	.long	-1
	.section	__DWARF,__apple_namespac,regular,debug
Lnamespac_begin:
	.long	1212240712
	.short	1
	.short	0
	.long	1
	.long	0
	.long	12
	.long	0
	.long	1
	.short	1
	.short	6
	.long	-1
	.section	__DWARF,__apple_types,regular,debug
Ltypes_begin:
	.long	1212240712
	.short	1
	.short	0
	.long	1
	.long	1
	.long	20
	.long	0
	.long	3
	.short	1
	.short	6
	.short	3
	.short	5
	.short	4
	.short	11
	.long	0
	.long	193495088
.set Lset15, Ltypes0-Ltypes_begin
	.long	Lset15
Ltypes0:
	.long	52
	.long	1
	.long	70
	.short	36
	.byte	0
	.long	0
.subsections_via_symbols
	.section	__DWARF,__debug_line,regular,debug
Lsection_line:
Lline_table_start0:
