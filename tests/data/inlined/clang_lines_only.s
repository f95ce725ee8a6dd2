	.text
	.file	"inlined.c"
	.globl	outer
	.p2align	4, 0x90
	.type	outer,@function
outer:
.Lfunc_begin0:
	.file	0 "/src" "inlined.c" md5 0x5fc23a8730f34ccf133857d4efcf0f3e
	.loc	0 10 0
	.cfi_sections .debug_frame
	.cfi_startproc
	.loc	0 11 13 prologue_end
	movl	%edi, (%rdx)
.Ltmp0:
	.loc	0 2 14
	imull	%edi, %edi
.Ltmp1:
	.loc	0 2 14 is_stmt 0
	imull	%esi, %esi
.Ltmp2:
	.loc	0 12 33 is_stmt 1
	leal	(%rdi,%rsi), %eax
	addl	$-7, %eax
	.loc	0 12 5 is_stmt 0
	retq
.Ltmp3:
.Lfunc_end0:
	.size	outer, .Lfunc_end0-outer
	.cfi_endproc

	.section	.debug_abbrev,"",@progbits
	.byte	1
	.byte	17
	.byte	1
	.byte	37
	.byte	37
	.byte	19
	.byte	5
	.byte	3
	.byte	37
	.byte	114
	.byte	23
	.byte	16
	.byte	23
	.byte	27
	.byte	37
	.byte	17
	.byte	27
	.byte	18
	.byte	6
	.byte	115
	.byte	23
	.byte	0
	.byte	0
	.byte	2
	.byte	46
	.byte	0
	.byte	3
	.byte	37
	.byte	32
	.byte	33
	.byte	1
	.byte	0
	.byte	0
	.byte	3
	.byte	46
	.byte	1
	.byte	17
	.byte	27
	.byte	18
	.byte	6
	.byte	122
	.byte	25
	.byte	3
	.byte	37
	.byte	0
	.byte	0
	.byte	4
	.byte	29
	.byte	1
	.byte	49
	.byte	19
	.byte	17
	.byte	27
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
	.byte	5
	.byte	29
	.byte	0
	.byte	49
	.byte	19
	.byte	17
	.byte	27
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
	.byte	0
	.section	.debug_info,"",@progbits
.Lcu_begin0:
	.long	.Ldebug_info_end0-.Ldebug_info_start0
.Ldebug_info_start0:
	.short	5
	.byte	1
	.byte	8
	.long	.debug_abbrev
	.byte	1
	.byte	0
	.short	12
	.byte	1
	.long	.Lstr_offsets_base0
	.long	.Lline_table_start0
	.byte	2
	.byte	0
	.long	.Lfunc_end0-.Lfunc_begin0
	.long	.Laddr_table_base0
	.byte	2
	.byte	3

	.byte	2
	.byte	4

	.byte	3
	.byte	0
	.long	.Lfunc_end0-.Lfunc_begin0

	.byte	5
	.byte	4
	.long	37
	.byte	1
	.long	.Ltmp2-.Ltmp0
	.byte	0
	.byte	12
	.byte	12
	.byte	5
	.long	35
	.byte	1
	.long	.Ltmp1-.Ltmp0
	.byte	0
	.byte	6
	.byte	12
	.byte	5
	.long	35
	.byte	2
	.long	.Ltmp2-.Ltmp1
	.byte	0
	.byte	7
	.byte	11
	.byte	0
	.byte	0
	.byte	0
.Ldebug_info_end0:
	.section	.debug_str_offsets,"",@progbits
	.long	28
	.short	5
	.short	0
.Lstr_offsets_base0:
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
	.asciz	"sum_of_squares"
.Linfo_string5:
	.asciz	"outer"
	.section	.debug_str_offsets,"",@progbits
	.long	.Linfo_string0
	.long	.Linfo_string1
	.long	.Linfo_string2
	.long	.Linfo_string3
	.long	.Linfo_string4
	.long	.Linfo_string5
	.section	.debug_addr,"",@progbits
	.long	.Ldebug_addr_end0-.Ldebug_addr_start0
.Ldebug_addr_start0:
	.short	5
	.byte	8
	.byte	0
.Laddr_table_base0:
	.quad	.Lfunc_begin0
	.quad	.Ltmp0
	.quad	.Ltmp1
.Ldebug_addr_end0:
	.ident	"Debian clang version 14.0.6"
	.section	".note.GNU-stack","",@progbits
	.addrsig
	.section	.debug_line,"",@progbits
.Lline_table_start0:
