	.file	"sample.c"
	.text
.Ltext0:
	.file 0 "/build" "sample.c"
	.type	clamp, @function
clamp:
.LFB0:
	.file 1 "limits.h"
	.loc 1 3 1
	.cfi_startproc
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset 6, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register 6
	movl	%edi, -4(%rbp)
	.loc 1 4 8
	cmpl	$255, -4(%rbp)
	jle	.L2
	.loc 1 5 16
	movl	$255, %eax
	jmp	.L3
.L2:
	.loc 1 6 12
	movl	-4(%rbp), %eax
.L3:
	.loc 1 7 1
	popq	%rbp
	.cfi_def_cfa 7, 8
	ret
	.cfi_endproc
.LFE0:
	.size	clamp, .-clamp
	.type	square, @function
square:
.LFB1:
	.file 2 "sample.c"
	.loc 2 6 1
	.cfi_startproc
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset 6, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register 6
	movl	%edi, -4(%rbp)
	.loc 2 7 14
	movl	-4(%rbp), %eax
	imull	%eax, %eax
	.loc 2 8 1
	popq	%rbp
	.cfi_def_cfa 7, 8
	ret
	.cfi_endproc
.LFE1:
	.size	square, .-square
	.globl	sum
	.type	sum, @function
sum:
.LFB2:
	.loc 2 14 1
	.cfi_startproc
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset 6, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register 6
	subq	$32, %rsp
	movq	%rdi, -24(%rbp)
	movl	%esi, -28(%rbp)
	.loc 2 15 9
	movl	$0, -4(%rbp)
	.loc 2 17 8
	cmpl	$0, -28(%rbp)
	jns	.L7
	.loc 2 18 9
	movl	-28(%rbp), %eax
	movl	%eax, %edi
	call	fail@PLT
.L7:
.LBB2:
	.loc 2 21 14
	movl	$0, -8(%rbp)
	.loc 2 21 5
	jmp	.L8
.L9:
	.loc 2 22 31 discriminator 3
	movl	-8(%rbp), %eax
	cltq
	leaq	0(,%rax,4), %rdx
	movq	-24(%rbp), %rax
	addq	%rdx, %rax
	.loc 2 22 18 discriminator 3
	movl	(%rax), %eax
	movl	%eax, %edi
	call	square
	.loc 2 22 15 discriminator 3
	addl	%eax, -4(%rbp)
	.loc 2 21 33 discriminator 3
	addl	$1, -8(%rbp)
.L8:
	.loc 2 21 23 discriminator 1
	movl	-8(%rbp), %eax
	cmpl	-28(%rbp), %eax
	jl	.L9
.LBE2:
	.loc 2 24 12
	movl	-4(%rbp), %eax
	movl	%eax, %edi
	call	clamp
	.loc 2 25 1
	leave
	.cfi_def_cfa 7, 8
	ret
	.cfi_endproc
.LFE2:
	.size	sum, .-sum
	.globl	first
	.type	first, @function
first:
.LFB3:
	.loc 2 27 17
	.cfi_startproc
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset 6, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register 6
	.loc 2 27 26
	movl	$1, %eax
	.loc 2 27 29
	popq	%rbp
	.cfi_def_cfa 7, 8
	ret
	.cfi_endproc
.LFE3:
	.size	first, .-first
	.globl	second
	.type	second, @function
second:
.LFB4:
	.loc 2 27 48
	.cfi_startproc
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset 6, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register 6
	.loc 2 27 57
	movl	$2, %eax
	.loc 2 27 60
	popq	%rbp
	.cfi_def_cfa 7, 8
	ret
	.cfi_endproc
.LFE4:
	.size	second, .-second
	.globl	widen
	.type	widen, @function
widen:
.LFB5:
	.loc 2 32 18
	.cfi_startproc
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset 6, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register 6
	movl	%edi, -4(%rbp)
	.loc 2 34 14
	movl	-4(%rbp), %eax
	addl	$1, %eax
	.loc 2 35 1
	popq	%rbp
	.cfi_def_cfa 7, 8
	ret
	.cfi_endproc
.LFE5:
	.size	widen, .-widen
.Letext0:
