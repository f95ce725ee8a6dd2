	.text
	.file	"inlined.c"
	.globl	outer
	.p2align	4, 0x90
	.type	outer,@function
outer:
.Lfunc_begin0:
	.file	1 "/src" "inlined.c"
	.loc	1 10 0
	.cfi_sections .debug_frame
	.cfi_startproc
	.loc	1 11 13 prologue_end
	movl	%edi, (%rdx)
.Ltmp0:
	.loc	1 2 14
	imull	%edi, %edi
.Ltmp1:
	.loc	1 2 14 is_stmt 0
	imull	%esi, %esi
.Ltmp2:
	.loc	1 12 33 is_stmt 1
	leal	(%rdi,%rsi), %eax
	addl	$-7, %eax
	.loc	1 12 5 is_stmt 0
	retq
.Ltmp3:
.Lfunc_end0:
	.size	outer, .Lfunc_end0-outer
	.cfi_endproc

	.section	.debug_loc,"",@progbits
.Ldebug_loc0:
	.quad	.Lfunc_begin0-.Lfunc_begin0
	.quad	.Ltmp1-.Lfunc_begin0
	.short	1
	.byte	85
	.quad	.Ltmp1-.Lfunc_begin0
	.quad	.Lfunc_end0-.Lfunc_begin0
	.short	4
	.byte	243
	.byte	1
	.byte	85
	.byte	159
	.quad	0
	.quad	0
.Ldebug_loc1:
	.quad	.Lfunc_begin0-.Lfunc_begin0
	.quad	.Ltmp2-.Lfunc_begin0
	.short	1
	.byte	84
	.quad	.Ltmp2-.Lfunc_begin0
	.quad	.Lfunc_end0-.Lfunc_begin0
	.short	4
	.byte	243
	.byte	1
	.byte	84
	.byte	159
	.quad	0
	.quad	0
.Ldebug_loc2:
	.quad	.Ltmp0-.Lfunc_begin0
	.quad	.Ltmp1-.Lfunc_begin0
	.short	1
	.byte	85
	.quad	0
	.quad	0
	.section	.debug_abbrev,"",@progbits
	.byte	1
	.byte	17
	.byte	1
	.byte	37
	.byte	14
	.byte	19
	.byte	5
	.byte	3
	.byte	14
	.byte	16
	.byte	23
	.byte	27
	.byte	14
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
	.byte	64
	.byte	24
	.ascii	"\227B"
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
	.byte	23
	.byte	49
	.byte	19
	.byte	0
	.byte	0
	.byte	10
	.byte	5
	.byte	0
	.byte	2
	.byte	24
	.byte	49
	.byte	19
	.byte	0
	.byte	0
	.byte	11
	.byte	15
	.byte	0
	.byte	73
	.byte	19
	.byte	0
	.byte	0
	.byte	0
	.section	.debug_info,"",@progbits
.Lcu_begin0:
	.long	.Ldebug_info_end0-.Ldebug_info_start0
.Ldebug_info_start0:
	.short	4
	.long	.debug_abbrev
	.byte	8
	.byte	1
	.long	.Linfo_string0
	.short	12
	.long	.Linfo_string1
	.long	.Lline_table_start0
	.long	.Linfo_string2
	.quad	.Lfunc_begin0
	.long	.Lfunc_end0-.Lfunc_begin0
	.byte	2
	.long	.Linfo_string3
	.byte	1
	.byte	1

	.long	66
	.byte	1
	.byte	3
	.long	.Linfo_string5
	.byte	1
	.byte	1
	.long	66
	.byte	0
	.byte	4
	.long	.Linfo_string4
	.byte	5
	.byte	4
	.byte	2
	.long	.Linfo_string6
	.byte	1
	.byte	5

	.long	66
	.byte	1
	.byte	3
	.long	.Linfo_string7
	.byte	1
	.byte	5
	.long	66
	.byte	3
	.long	.Linfo_string8
	.byte	1
	.byte	5
	.long	66
	.byte	0
	.byte	5
	.quad	.Lfunc_begin0
	.long	.Lfunc_end0-.Lfunc_begin0
	.byte	1
	.byte	87

	.long	.Linfo_string9
	.byte	1
	.byte	10

	.long	66

	.byte	6
	.long	.Ldebug_loc0
	.long	.Linfo_string7
	.byte	1
	.byte	10
	.long	66
	.byte	6
	.long	.Ldebug_loc1
	.long	.Linfo_string8
	.byte	1
	.byte	10
	.long	66
	.byte	7
	.byte	1
	.byte	81
	.long	.Linfo_string10
	.byte	1
	.byte	10
	.long	270
	.byte	8
	.long	73
	.quad	.Ltmp0
	.long	.Ltmp2-.Ltmp0
	.byte	1
	.byte	12
	.byte	12
	.byte	9
	.long	.Ldebug_loc2
	.long	85
	.byte	10
	.byte	1
	.byte	84
	.long	96
	.byte	8
	.long	42
	.quad	.Ltmp0
	.long	.Ltmp1-.Ltmp0
	.byte	1
	.byte	6
	.byte	12
	.byte	10
	.byte	1
	.byte	85
	.long	54
	.byte	0
	.byte	8
	.long	42
	.quad	.Ltmp1
	.long	.Ltmp2-.Ltmp1
	.byte	1
	.byte	7
	.byte	11
	.byte	10
	.byte	1
	.byte	84
	.long	54
	.byte	0
	.byte	0
	.byte	0
	.byte	11
	.long	66
	.byte	0
.Ldebug_info_end0:
	.section	.debug_str,"MS",@progbits,1
.Linfo_string0:
	.asciz	"Debian clang version 14.0.6"
.Linfo_string1:
	.asciz	"inlined.c"
.Linfo_string2:
	.asciz	"/src"
.Linfo_string3:
	.asciz	"square"
.Linfo_string4:
	.asciz	"int"
.Linfo_string5:
	.asciz	"x"
.Linfo_string6:
	.asciz	"sum_of_squares"
.Linfo_string7:
	.asciz	"a"
.Linfo_string8:
	.asciz	"b"
.Linfo_string9:
	.asciz	"outer"
.Linfo_string10:
	.asciz	"result"
	.ident	"Debian clang version 14.0.6"
	.section	".note.GNU-stack","",@progbits
	.addrsig
	.section	.debug_line,"",@progbits
.Lline_table_start0:
