	.file	"inlined.c"
	.text
.Ltext0:
	.cfi_sections	.debug_frame
	.file 1 "inlined.c"
	.p2align 4
	.globl	outer
	.type	outer, @function
outer:
.LVL0:
.LFB2:
	.loc 1 10 38 view -0
	.cfi_startproc
	.loc 1 11 5 view .LVU1
	.loc 1 11 13 is_stmt 0 view .LVU2
	movl	%edi, (%rdx)
	.loc 1 12 5 is_stmt 1 view .LVU3
.LVL1:
.LBB12:
.LBI12:
	.loc 1 5 12 view .LVU4
.LBB13:
	.loc 1 6 5 view .LVU5
.LBB14:
.LBI14:
	.loc 1 1 12 view .LVU6
.LBB15:
	.loc 1 2 5 view .LVU7
	.loc 1 2 5 is_stmt 0 view .LVU8
.LBE15:
.LBE14:
.LBB17:
.LBI17:
	.loc 1 1 12 is_stmt 1 view .LVU9
.LBB18:
	.loc 1 2 5 view .LVU10
	.loc 1 2 14 is_stmt 0 view .LVU11
	imull	%esi, %esi
.LVL2:
	.loc 1 2 14 view .LVU12
.LBE18:
.LBE17:
.LBB19:
.LBB16:
	imull	%edi, %edi
.LVL3:
	.loc 1 2 14 view .LVU13
.LBE16:
.LBE19:
.LBE13:
.LBE12:
	.loc 1 12 33 view .LVU14
	leal	-7(%rdi,%rsi), %eax
	.loc 1 13 1 view .LVU15
	ret
	.cfi_endproc
.LFE2:
	.size	outer, .-outer
.Letext0:
	.section	.debug_addr,"",@progbits
.Ldebug_addr0:
	.quad	.LBI12
	.quad	.LBI14
	.quad	.LFB2
	.quad	.LBI17
	.quad	.LBB12
	.quad	.LBB17
	.quad	.LVL0
	.quad	.LVL1
	.quad	.LVL2
	.quad	.LVL3
	.section	.debug_info.dwo,"e",@progbits
.Ldebug_info0:
	.long	0x111
	.value	0x4
	.long	.Ldebug_abbrev0
	.byte	0x8
	.uleb128 0x1
	.uleb128 0x3
	.byte	0xc
	.uleb128 0x6
	.uleb128 0x1
	.byte	0x19
	.byte	0x4c
	.byte	0x95
	.byte	0x3f
	.byte	0xbc
	.byte	0x19
	.byte	0x5e
	.byte	0x60
	.uleb128 0x2
	.uleb128 0x2
	.byte	0x1
	.byte	0xa
	.byte	0x5
	.long	0xcf
	.uleb128 0x2
	.quad	.LFE2-.LFB2
	.uleb128 0x1
	.byte	0x9c
	.long	0xcf
	.uleb128 0x3
	.string	"a"
	.byte	0x1
	.byte	0xa
	.byte	0xf
	.long	0xcf
	.long	.LLST0-.Ldebug_loc0
	.long	.LVUS0-.Ldebug_loc0
	.uleb128 0x3
	.string	"b"
	.byte	0x1
	.byte	0xa
	.byte	0x16
	.long	0xcf
	.long	.LLST1-.Ldebug_loc0
	.long	.LVUS1-.Ldebug_loc0
	.uleb128 0x4
	.uleb128 0x4
	.byte	0x1
	.byte	0xa
	.byte	0x1e
	.long	0xd6
	.uleb128 0x1
	.byte	0x51
	.uleb128 0x5
	.long	0xdc
	.uleb128 0
	.byte	.LVU4
	.uleb128 0x4
	.quad	.LBE12-.LBB12
	.byte	0x1
	.byte	0xc
	.byte	0xc
	.uleb128 0x6
	.long	0xf4
	.long	.LLST2-.Ldebug_loc0
	.long	.LVUS2-.Ldebug_loc0
	.uleb128 0x6
	.long	0xea
	.long	.LLST3-.Ldebug_loc0
	.long	.LVUS3-.Ldebug_loc0
	.uleb128 0x7
	.long	0xff
	.uleb128 0x1
	.byte	.LVU6
	.long	0
	.byte	0x1
	.byte	0x6
	.byte	0xc
	.long	0xac
	.uleb128 0x6
	.long	0x109
	.long	.LLST4-.Ldebug_loc0
	.long	.LVUS4-.Ldebug_loc0
	.byte	0
	.uleb128 0x5
	.long	0xff
	.uleb128 0x3
	.byte	.LVU9
	.uleb128 0x5
	.quad	.LBE17-.LBB17
	.byte	0x1
	.byte	0x7
	.byte	0xb
	.uleb128 0x6
	.long	0x109
	.long	.LLST5-.Ldebug_loc0
	.long	.LVUS5-.Ldebug_loc0
	.byte	0
	.byte	0
	.byte	0
	.uleb128 0x8
	.byte	0x4
	.byte	0x5
	.string	"int"
	.uleb128 0x9
	.byte	0x8
	.long	0xcf
	.uleb128 0xa
	.uleb128 0
	.byte	0x1
	.byte	0x5
	.byte	0xc
	.long	0xcf
	.byte	0x1
	.long	0xff
	.uleb128 0xb
	.string	"a"
	.byte	0x1
	.byte	0x5
	.byte	0x1f
	.long	0xcf
	.uleb128 0xb
	.string	"b"
	.byte	0x1
	.byte	0x5
	.byte	0x26
	.long	0xcf
	.byte	0
	.uleb128 0xc
	.uleb128 0x5
	.byte	0x1
	.byte	0x1
	.byte	0xc
	.long	0xcf
	.byte	0x1
	.uleb128 0xb
	.string	"x"
	.byte	0x1
	.byte	0x1
	.byte	0x17
	.long	0xcf
	.byte	0
	.byte	0
	.section	.debug_info,"",@progbits
.Lskeleton_debug_info0:
	.long	0x34
	.value	0x4
	.long	.Lskeleton_debug_abbrev0
	.byte	0x8
	.uleb128 0x1
	.quad	.Ltext0
	.quad	.Letext0-.Ltext0
	.long	.Ldebug_line0
	.long	.LASF0
	.long	.LASF1
	.long	.Ldebug_addr0
	.byte	0x19
	.byte	0x4c
	.byte	0x95
	.byte	0x3f
	.byte	0xbc
	.byte	0x19
	.byte	0x5e
	.byte	0x60
	.long	.Ldebug_ranges0
	.section	.debug_abbrev,"",@progbits
.Lskeleton_debug_abbrev0:
	.uleb128 0x1
	.uleb128 0x11
	.byte	0
	.uleb128 0x11
	.uleb128 0x1
	.uleb128 0x12
	.uleb128 0x7
	.uleb128 0x10
	.uleb128 0x17
	.uleb128 0x2130
	.uleb128 0xe
	.uleb128 0x1b
	.uleb128 0xe
	.uleb128 0x2134
	.uleb128 0x19
	.uleb128 0x2133
	.uleb128 0x17
	.uleb128 0x2131
	.uleb128 0x7
	.uleb128 0x2132
	.uleb128 0x17
	.byte	0
	.byte	0
	.byte	0
	.section	.debug_abbrev.dwo,"e",@progbits
.Ldebug_abbrev0:
	.uleb128 0x1
	.uleb128 0x11
	.byte	0x1
	.uleb128 0x25
	.uleb128 0x1f02
	.uleb128 0x13
	.uleb128 0xb
	.uleb128 0x3
	.uleb128 0x1f02
	.uleb128 0x1b
	.uleb128 0x1f02
	.uleb128 0x2131
	.uleb128 0x7
	.byte	0
	.byte	0
	.uleb128 0x2
	.uleb128 0x2e
	.byte	0x1
	.uleb128 0x3f
	.uleb128 0x19
	.uleb128 0x3
	.uleb128 0x1f02
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x27
	.uleb128 0x19
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x11
	.uleb128 0x1f01
	.uleb128 0x12
	.uleb128 0x7
	.uleb128 0x40
	.uleb128 0x18
	.uleb128 0x2117
	.uleb128 0x19
	.uleb128 0x1
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0x3
	.uleb128 0x5
	.byte	0
	.uleb128 0x3
	.uleb128 0x8
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x2
	.uleb128 0x17
	.uleb128 0x2137
	.uleb128 0x17
	.byte	0
	.byte	0
	.uleb128 0x4
	.uleb128 0x5
	.byte	0
	.uleb128 0x3
	.uleb128 0x1f02
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x2
	.uleb128 0x18
	.byte	0
	.byte	0
	.uleb128 0x5
	.uleb128 0x1d
	.byte	0x1
	.uleb128 0x31
	.uleb128 0x13
	.uleb128 0x52
	.uleb128 0x1f01
	.uleb128 0x2138
	.uleb128 0xb
	.uleb128 0x11
	.uleb128 0x1f01
	.uleb128 0x12
	.uleb128 0x7
	.uleb128 0x58
	.uleb128 0xb
	.uleb128 0x59
	.uleb128 0xb
	.uleb128 0x57
	.uleb128 0xb
	.byte	0
	.byte	0
	.uleb128 0x6
	.uleb128 0x5
	.byte	0
	.uleb128 0x31
	.uleb128 0x13
	.uleb128 0x2
	.uleb128 0x17
	.uleb128 0x2137
	.uleb128 0x17
	.byte	0
	.byte	0
	.uleb128 0x7
	.uleb128 0x1d
	.byte	0x1
	.uleb128 0x31
	.uleb128 0x13
	.uleb128 0x52
	.uleb128 0x1f01
	.uleb128 0x2138
	.uleb128 0xb
	.uleb128 0x55
	.uleb128 0x17
	.uleb128 0x58
	.uleb128 0xb
	.uleb128 0x59
	.uleb128 0xb
	.uleb128 0x57
	.uleb128 0xb
	.uleb128 0x1
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0x8
	.uleb128 0x24
	.byte	0
	.uleb128 0xb
	.uleb128 0xb
	.uleb128 0x3e
	.uleb128 0xb
	.uleb128 0x3
	.uleb128 0x8
	.byte	0
	.byte	0
	.uleb128 0x9
	.uleb128 0xf
	.byte	0
	.uleb128 0xb
	.uleb128 0xb
	.uleb128 0x49
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0xa
	.uleb128 0x2e
	.byte	0x1
	.uleb128 0x3
	.uleb128 0x1f02
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x27
	.uleb128 0x19
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x20
	.uleb128 0xb
	.uleb128 0x1
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0xb
	.uleb128 0x5
	.byte	0
	.uleb128 0x3
	.uleb128 0x8
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x49
	.uleb128 0x13
	.byte	0
	.byte	0
	.uleb128 0xc
	.uleb128 0x2e
	.byte	0x1
	.uleb128 0x3
	.uleb128 0x1f02
	.uleb128 0x3a
	.uleb128 0xb
	.uleb128 0x3b
	.uleb128 0xb
	.uleb128 0x39
	.uleb128 0xb
	.uleb128 0x27
	.uleb128 0x19
	.uleb128 0x49
	.uleb128 0x13
	.uleb128 0x20
	.uleb128 0xb
	.byte	0
	.byte	0
	.byte	0
	.section	.debug_loc.dwo,"e",@progbits
.Ldebug_loc0:
.LVUS0:
	.uleb128 0
	.uleb128 .LVU13
	.uleb128 .LVU13
	.uleb128 0
.LLST0:
	.byte	0x3
	.uleb128 0x6
	.long	.LVL3-.LVL0
	.value	0x1
	.byte	0x55
	.byte	0x3
	.uleb128 0x9
	.long	.LFE2-.LVL3
	.value	0x2
	.byte	0x71
	.sleb128 0
	.byte	0
.LVUS1:
	.uleb128 0
	.uleb128 .LVU12
	.uleb128 .LVU12
	.uleb128 0
.LLST1:
	.byte	0x3
	.uleb128 0x6
	.long	.LVL2-.LVL0
	.value	0x1
	.byte	0x54
	.byte	0x3
	.uleb128 0x8
	.long	.LFE2-.LVL2
	.value	0x4
	.byte	0xf3
	.uleb128 0x1
	.byte	0x54
	.byte	0x9f
	.byte	0
.LVUS2:
	.uleb128 .LVU4
	.uleb128 .LVU11
.LLST2:
	.byte	0x3
	.uleb128 0x7
	.long	0
	.value	0x1
	.byte	0x54
	.byte	0
.LVUS3:
	.uleb128 .LVU4
	.uleb128 .LVU11
.LLST3:
	.byte	0x3
	.uleb128 0x7
	.long	0
	.value	0x1
	.byte	0x55
	.byte	0
.LVUS4:
	.uleb128 .LVU6
	.uleb128 .LVU8
.LLST4:
	.byte	0x3
	.uleb128 0x7
	.long	0
	.value	0x1
	.byte	0x55
	.byte	0
.LVUS5:
	.uleb128 .LVU8
	.uleb128 .LVU11
.LLST5:
	.byte	0x3
	.uleb128 0x7
	.long	0
	.value	0x1
	.byte	0x54
	.byte	0
	.section	.debug_gnu_pubnames,"",@progbits
	.long	0x39
	.value	0x2
	.long	.Lskeleton_debug_info0
	.long	0x115
	.long	0x18
	.byte	0x30
	.string	"outer"
	.long	0xdc
	.byte	0xb0
	.string	"sum_of_squares"
	.long	0xff
	.byte	0xb0
	.string	"square"
	.long	0
	.section	.debug_gnu_pubtypes,"",@progbits
	.long	0x17
	.value	0x2
	.long	.Lskeleton_debug_info0
	.long	0x115
	.long	0xcf
	.byte	0x90
	.string	"int"
	.long	0
	.section	.debug_aranges,"",@progbits
	.long	0x2c
	.value	0x2
	.long	.Lskeleton_debug_info0
	.byte	0x8
	.byte	0
	.value	0
	.value	0
	.quad	.Ltext0
	.quad	.Letext0-.Ltext0
	.quad	0
	.quad	0
	.section	.debug_ranges,"",@progbits
.Ldebug_ranges0:
	.quad	.LBB14-.Ltext0
	.quad	.LBE14-.Ltext0
	.quad	.LBB19-.Ltext0
	.quad	.LBE19-.Ltext0
	.quad	0
	.quad	0
	.section	.debug_line,"",@progbits
.Ldebug_line0:
	.section	.debug_line.dwo,"e",@progbits
.Lskeleton_debug_line0:
	.long	.LELT0-.LSLT0
.LSLT0:
	.value	0x4
	.long	.LELTP0-.LASLTP0
.LASLTP0:
	.byte	0x1
	.byte	0x1
	.byte	0x1
	.byte	0xf6
	.byte	0xf2
	.byte	0xd
	.byte	0
	.byte	0x1
	.byte	0x1
	.byte	0x1
	.byte	0x1
	.byte	0
	.byte	0
	.byte	0
	.byte	0x1
	.byte	0
	.byte	0
	.byte	0x1
	.byte	0
	.string	"inlined.c"
	.uleb128 0
	.uleb128 0
	.uleb128 0
	.byte	0
.LELTP0:
.LELT0:
	.section	.debug_str,"MS",@progbits,1
.LASF0:
	.string	"gcc_4_split.dwo"
.LASF1:
	.string	"/src"
	.section	.debug_str_offsets.dwo,"e",@progbits
	.long	0
	.long	0xf
	.long	0x14
	.long	0x1a
	.long	0x82
	.long	0x89
	.long	0x90
	.section	.debug_str.dwo,"e",@progbits
	.string	"sum_of_squares"
	.string	"/src"
	.string	"outer"
	.string	"GNU C17 12.2.0 -mtune=generic -march=x86-64 -gdwarf-4 -gsplit-dwarf -O2 -fno-asynchronous-unwind-tables"
	.string	"result"
	.string	"square"
	.string	"inlined.c"
	.ident	"GCC: (Debian 12.2.0-14+deb12u1) 12.2.0"
	.section	.note.GNU-stack,"",@progbits
