	.section	__TEXT,__text,regular,pure_instructions
	.macosx_version_min 10, 4
	.globl	_sum                            ## -- Begin function sum
	.p2align	4, 0x90
_sum:                                   ## @sum
Lfunc_begin0:
	.file	1 "/build" "sample.c"
	.loc	1 14 0                          ## sample.c:14:0
	.cfi_startproc
## %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	subq	$32, %rsp
	movq	%rdi, -8(%rbp)
	movl	%esi, -12(%rbp)
Ltmp0:
	.loc	1 15 9 prologue_end             ## sample.c:15:9
	movl	$0, -16(%rbp)
Ltmp1:
	.loc	1 17 15                         ## sample.c:17:15
	cmpl	$0, -12(%rbp)
Ltmp2:
	.loc	1 17 9 is_stmt 0                ## sample.c:17:9
	jge	LBB0_2
## %bb.1:
Ltmp3:
	.loc	1 18 14 is_stmt 1               ## sample.c:18:14
	movl	-12(%rbp), %edi
	.loc	1 18 9 is_stmt 0                ## sample.c:18:9
	callq	_fail
Ltmp4:
LBB0_2:
	.loc	1 21 14 is_stmt 1               ## sample.c:21:14
	movl	$0, -20(%rbp)
LBB0_3:                                 ## =>This Inner Loop Header: Depth=1
Ltmp5:
	.loc	1 21 21 is_stmt 0               ## sample.c:21:21
	movl	-20(%rbp), %eax
	.loc	1 21 23                         ## sample.c:21:23
	cmpl	-12(%rbp), %eax
Ltmp6:
	.loc	1 21 5                          ## sample.c:21:5
	jge	LBB0_6
## %bb.4:                               ##   in Loop: Header=BB0_3 Depth=1
Ltmp7:
	.loc	1 22 25 is_stmt 1               ## sample.c:22:25
	movq	-8(%rbp), %rax
	movslq	-20(%rbp), %rcx
	movl	(%rax,%rcx,4), %edi
	.loc	1 22 18 is_stmt 0               ## sample.c:22:18
	callq	_square
	.loc	1 22 15                         ## sample.c:22:15
	addl	-16(%rbp), %eax
	movl	%eax, -16(%rbp)
## %bb.5:                               ##   in Loop: Header=BB0_3 Depth=1
	.loc	1 21 33 is_stmt 1               ## sample.c:21:33
	movl	-20(%rbp), %eax
	addl	$1, %eax
	movl	%eax, -20(%rbp)
	.loc	1 21 5 is_stmt 0                ## sample.c:21:5
	jmp	LBB0_3
Ltmp8:
LBB0_6:
	.loc	1 24 18 is_stmt 1               ## sample.c:24:18
	movl	-16(%rbp), %edi
	.loc	1 24 12 is_stmt 0               ## sample.c:24:12
	callq	_clamp
	.loc	1 24 5                          ## sample.c:24:5
	addq	$32, %rsp
	popq	%rbp
	retq
Ltmp9:
Lfunc_end0:
	.cfi_endproc
                                        ## -- End function
	.p2align	4, 0x90                         ## -- Begin function square
_square:                                ## @square
Lfunc_begin1:
	.loc	1 6 0 is_stmt 1                 ## sample.c:6:0
	.cfi_startproc
## %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	movl	%edi, -4(%rbp)
Ltmp10:
	.loc	1 7 12 prologue_end             ## sample.c:7:12
	movl	-4(%rbp), %eax
	.loc	1 7 14 is_stmt 0                ## sample.c:7:14
	imull	-4(%rbp), %eax
	.loc	1 7 5                           ## sample.c:7:5
	popq	%rbp
	retq
Ltmp11:
Lfunc_end1:
	.cfi_endproc
                                        ## -- End function
	.p2align	4, 0x90                         ## -- Begin function clamp
_clamp:                                 ## @clamp
Lfunc_begin2:
	.file	2 "/build" "./limits.h"
	.loc	2 3 0 is_stmt 1                 ## ./limits.h:3:0
	.cfi_startproc
## %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	movl	%edi, -8(%rbp)
Ltmp12:
	.loc	2 4 15 prologue_end             ## ./limits.h:4:15
	cmpl	$255, -8(%rbp)
Ltmp13:
	.loc	2 4 9 is_stmt 0                 ## ./limits.h:4:9
	jle	LBB2_2
## %bb.1:
Ltmp14:
	.loc	2 5 9 is_stmt 1                 ## ./limits.h:5:9
	movl	$255, -4(%rbp)
	jmp	LBB2_3
Ltmp15:
LBB2_2:
	.loc	2 6 12                          ## ./limits.h:6:12
	movl	-8(%rbp), %eax
	.loc	2 6 5 is_stmt 0                 ## ./limits.h:6:5
	movl	%eax, -4(%rbp)
LBB2_3:
	.loc	2 7 1 is_stmt 1                 ## ./limits.h:7:1
	movl	-4(%rbp), %eax
	popq	%rbp
	retq
Ltmp16:
Lfunc_end2:
	.cfi_endproc
                                        ## -- End function
	.globl	_first                          ## -- Begin function first
	.p2align	4, 0x90
_first:                                 ## @first
Lfunc_begin3:
	.loc	1 27 0                          ## sample.c:27:0
	.cfi_startproc
## %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
Ltmp17:
	.loc	1 27 19 prologue_end            ## sample.c:27:19
	movl	$1, %eax
	popq	%rbp
	retq
Ltmp18:
Lfunc_end3:
	.cfi_endproc
                                        ## -- End function
	.globl	_second                         ## -- Begin function second
	.p2align	4, 0x90
_second:                                ## @second
Lfunc_begin4:
	.loc	1 27 0                          ## sample.c:27:0
	.cfi_startproc
## %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
Ltmp19:
	.loc	1 27 50 prologue_end            ## sample.c:27:50
	movl	$2, %eax
	popq	%rbp
	retq
Ltmp20:
Lfunc_end4:
	.cfi_endproc
                                        ## -- End function
	.globl	_widen                          ## -- Begin function widen
	.p2align	4, 0x90
_widen:                                 ## @widen
Lfunc_begin5:
	.loc	1 32 0                          ## sample.c:32:0
	.cfi_startproc
## %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	movl	%edi, -4(%rbp)
Ltmp21:
	.loc	1 34 12 prologue_end            ## sample.c:34:12
	movl	-4(%rbp), %eax
	.loc	1 34 14 is_stmt 0               ## sample.c:34:14
	addl	$1, %eax
	.loc	1 34 5                          ## sample.c:34:5
	popq	%rbp
	retq
Ltmp22:
Lfunc_end5:
	.cfi_endproc
                                        ## -- End function
