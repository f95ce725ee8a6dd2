	.text
	.syntax unified
	.eabi_attribute	67, "2.09"	@ Tag_conformance
	.eabi_attribute	6, 10	@ Tag_CPU_arch
	.eabi_attribute	7, 65	@ Tag_CPU_arch_profile
	.eabi_attribute	8, 1	@ Tag_ARM_ISA_use
	.eabi_attribute	9, 2	@ Tag_THUMB_ISA_use
	.fpu	vfpv3-d16
	.eabi_attribute	34, 1	@ Tag_CPU_unaligned_access
	.eabi_attribute	15, 1	@ Tag_ABI_PCS_RW_data
	.eabi_attribute	16, 1	@ Tag_ABI_PCS_RO_data
	.eabi_attribute	17, 2	@ Tag_ABI_PCS_GOT_use
	.eabi_attribute	20, 1	@ Tag_ABI_FP_denormal
	.eabi_attribute	21, 0	@ Tag_ABI_FP_exceptions
	.eabi_attribute	23, 3	@ Tag_ABI_FP_number_model
	.eabi_attribute	24, 1	@ Tag_ABI_align_needed
	.eabi_attribute	25, 1	@ Tag_ABI_align_preserved
	.eabi_attribute	28, 1	@ Tag_ABI_VFP_args
	.eabi_attribute	38, 1	@ Tag_ABI_FP_16bit_format
	.eabi_attribute	18, 4	@ Tag_ABI_PCS_wchar_t
	.eabi_attribute	26, 2	@ Tag_ABI_enum_size
	.eabi_attribute	14, 0	@ Tag_ABI_PCS_R9_use
	.file	"sample.c"
	.globl	sum                             @ -- Begin function sum
	.p2align	2
	.type	sum,%function
	.code	32                              @ @sum
sum:
.Lfunc_begin0:
	.file	0 "/build" "sample.c" md5 0xdbd1d0cf473becfd3515f0854124d705
	.loc	0 14 0                          @ sample.c:14:0
	.fnstart
	.cfi_sections .debug_frame
	.cfi_startproc
@ %bb.0:
	@DEBUG_VALUE: sum:values <- $r0
	@DEBUG_VALUE: sum:count <- $r1
	@DEBUG_VALUE: sum:values <- $r0
	.save	{r11, lr}
	push	{r11, lr}
	.cfi_def_cfa_offset 8
	.cfi_offset lr, -4
	.cfi_offset r11, -8
.Ltmp0:
	@DEBUG_VALUE: sum:total <- 0
	.loc	0 17 9 prologue_end             @ sample.c:17:9
	cmp	r1, #0
	bmi	.LBB0_6
.Ltmp1:
@ %bb.1:
	@DEBUG_VALUE: sum:total <- 0
	@DEBUG_VALUE: sum:count <- $r1
	@DEBUG_VALUE: sum:values <- $r0
	@DEBUG_VALUE: sum:values <- $r0
	@DEBUG_VALUE: sum:total <- 0
	@DEBUG_VALUE: i <- 0
	.loc	0 21 5                          @ sample.c:21:5
	beq	.LBB0_4
.Ltmp2:
@ %bb.2:
	@DEBUG_VALUE: i <- 0
	@DEBUG_VALUE: sum:total <- 0
	@DEBUG_VALUE: sum:count <- $r1
	@DEBUG_VALUE: sum:values <- $r0
	.loc	0 0 5 is_stmt 0                 @ sample.c:0:5
	mov	r2, r0
.Ltmp3:
	@DEBUG_VALUE: sum:values <- $r2
	mov	r0, #0
.Ltmp4:
.LBB0_3:                                @ =>This Inner Loop Header: Depth=1
	@DEBUG_VALUE: sum:total <- $r0
	@DEBUG_VALUE: i <- [DW_OP_LLVM_arg 0, DW_OP_LLVM_arg 0, DW_OP_minus, DW_OP_consts 18446744073709551615, DW_OP_div, DW_OP_stack_value] undef
	.loc	0 22 25 is_stmt 1               @ sample.c:22:25
	ldr	r3, [r2], #4
.Ltmp5:
	@DEBUG_VALUE: square:x <- $r3
	.loc	0 22 15 is_stmt 0               @ sample.c:22:15
	mla	r0, r3, r3, r0
.Ltmp6:
	@DEBUG_VALUE: i <- [DW_OP_LLVM_arg 0, DW_OP_LLVM_arg 0, DW_OP_minus, DW_OP_consts 18446744073709551615, DW_OP_div, DW_OP_consts 1, DW_OP_plus, DW_OP_stack_value] undef
	@DEBUG_VALUE: sum:total <- $r0
	.loc	0 21 23 is_stmt 1               @ sample.c:21:23
	subs	r1, r1, #1
.Ltmp7:
	@DEBUG_VALUE: sum:count <- [DW_OP_LLVM_entry_value 1] $r1
	.loc	0 21 5 is_stmt 0                @ sample.c:21:5
	bne	.LBB0_3
	b	.LBB0_5
.Ltmp8:
.LBB0_4:
	@DEBUG_VALUE: i <- 0
	@DEBUG_VALUE: sum:total <- 0
	@DEBUG_VALUE: sum:count <- $r1
	@DEBUG_VALUE: sum:values <- $r0
	.loc	0 0 5                           @ sample.c:0:5
	mov	r0, #0
.Ltmp9:
.LBB0_5:
	@DEBUG_VALUE: clamp:value <- $r0
	cmp	r0, #255
	movhs	r0, #255
.Ltmp10:
	.loc	0 24 5 is_stmt 1                @ sample.c:24:5
	pop	{r11, pc}
.LBB0_6:
.Ltmp11:
	@DEBUG_VALUE: sum:total <- 0
	@DEBUG_VALUE: sum:count <- $r1
	@DEBUG_VALUE: sum:values <- $r0
	.loc	0 18 9                          @ sample.c:18:9
	mov	r0, r1
.Ltmp12:
	@DEBUG_VALUE: sum:values <- [DW_OP_LLVM_entry_value 1] $r0
	bl	fail
.Ltmp13:
	@DEBUG_VALUE: sum:count <- [DW_OP_LLVM_entry_value 1] $r1
.Lfunc_end0:
	.size	sum, .Lfunc_end0-sum
	.cfi_endproc
	.file	1 "." "limits.h" md5 0xf86e1f8ae4a8f2b6750b5285ae0b5e88
	.cantunwind
	.fnend
                                        @ -- End function
	.globl	first                           @ -- Begin function first
	.p2align	2
	.type	first,%function
	.code	32                              @ @first
first:
.Lfunc_begin1:
	.loc	0 27 0                          @ sample.c:27:0
	.fnstart
	.cfi_startproc
@ %bb.0:
	.loc	0 27 19 prologue_end            @ sample.c:27:19
	mov	r0, #1
	bx	lr
.Ltmp14:
.Lfunc_end1:
	.size	first, .Lfunc_end1-first
	.cfi_endproc
	.cantunwind
	.fnend
                                        @ -- End function
	.globl	second                          @ -- Begin function second
	.p2align	2
	.type	second,%function
	.code	32                              @ @second
second:
.Lfunc_begin2:
	.loc	0 27 0                          @ sample.c:27:0
	.fnstart
	.cfi_startproc
@ %bb.0:
	.loc	0 27 50 prologue_end            @ sample.c:27:50
	mov	r0, #2
	bx	lr
.Ltmp15:
.Lfunc_end2:
	.size	second, .Lfunc_end2-second
	.cfi_endproc
	.cantunwind
	.fnend
                                        @ -- End function
	.globl	widen                           @ -- Begin function widen
	.p2align	2
	.type	widen,%function
	.code	32                              @ @widen
widen:
.Lfunc_begin3:
	.loc	0 32 0                          @ sample.c:32:0
	.fnstart
	.cfi_startproc
@ %bb.0:
	@DEBUG_VALUE: widen:x <- $r0
	.loc	0 34 14 prologue_end            @ sample.c:34:14
	add	r0, r0, #1
.Ltmp16:
	@DEBUG_VALUE: widen:x <- [DW_OP_LLVM_entry_value 1] $r0
	.loc	0 34 5 is_stmt 0                @ sample.c:34:5
	bx	lr
.Ltmp17:
.Lfunc_end3:
	.size	widen, .Lfunc_end3-widen
	.cfi_endproc
	.cantunwind
	.fnend
                                        @ -- End function
