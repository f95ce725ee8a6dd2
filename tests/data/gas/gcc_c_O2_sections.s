	.file	"sample.c"
	.text
.Ltext0:
	.file 0 "/build" "sample.c"
	.section	.text.unlikely.sum,"ax",@progbits
.LCOLDB0:
	.section	.text.sum,"ax",@progbits
.LHOTB0:
	.p2align 4
	.section	.text.unlikely.sum
.Ltext_cold0:
	.section	.text.sum
	.globl	sum
	.type	sum, @function
sum:
.LVL0:
.LFB2:
	.file 1 "sample.c"
	.loc 1 14 1 view -0
	.cfi_startproc
	.loc 1 15 5 view .LVU1
	.loc 1 17 5 view .LVU2
	.loc 1 17 8 is_stmt 0 view .LVU3
	testl	%esi, %esi
	js	.L2
.LVL1:
.LBB7:
	.loc 1 21 23 is_stmt 1 view .LVU4
	je	.L10
	movslq	%esi, %rsi
	.loc 1 21 23 is_stmt 0 view .LVU5
.LBE7:
	.loc 1 15 9 view .LVU6
	xorl	%eax, %eax
	leaq	(%rdi,%rsi,4), %rcx
.LVL2:
	.p2align 4,,10
	.p2align 3
.L5:
.LBB12:
	.loc 1 22 9 is_stmt 1 discriminator 3 view .LVU7
	.loc 1 22 18 is_stmt 0 discriminator 3 view .LVU8
	movl	(%rdi), %edx
.LVL3:
.LBB8:
.LBI8:
	.loc 1 5 12 is_stmt 1 discriminator 3 view .LVU9
.LBB9:
	.loc 1 7 5 discriminator 3 view .LVU10
	.loc 1 7 5 is_stmt 0 discriminator 3 view .LVU11
.LBE9:
.LBE8:
	.loc 1 21 23 discriminator 3 view .LVU12
	addq	$4, %rdi
.LVL4:
.LBB11:
.LBB10:
	.loc 1 7 14 discriminator 3 view .LVU13
	imull	%edx, %edx
.LBE10:
.LBE11:
	.loc 1 22 15 discriminator 3 view .LVU14
	addl	%edx, %eax
.LVL5:
	.loc 1 21 33 is_stmt 1 discriminator 3 view .LVU15
	.loc 1 21 23 discriminator 3 view .LVU16
	cmpq	%rdi, %rcx
	jne	.L5
.LBE12:
.LBB13:
.LBB14:
	.file 2 "limits.h"
	.loc 2 4 8 is_stmt 0 view .LVU17
	movl	$255, %edx
	cmpl	%edx, %eax
	cmovg	%edx, %eax
.LVL6:
	.loc 2 4 8 view .LVU18
.LBE14:
.LBE13:
	.loc 1 24 5 is_stmt 1 view .LVU19
.LBB16:
.LBI13:
	.loc 2 2 19 view .LVU20
.LBB15:
	.loc 2 4 5 view .LVU21
.LBE15:
.LBE16:
	.loc 1 25 1 is_stmt 0 view .LVU22
	ret
.LVL7:
	.p2align 4,,10
	.p2align 3
.L10:
.LBB17:
	.loc 1 21 23 view .LVU23
	xorl	%eax, %eax
	ret
.LVL8:
	.loc 1 21 23 view .LVU24
.LBE17:
	.cfi_endproc
	.section	.text.unlikely.sum
	.cfi_startproc
	.type	sum.cold, @function
sum.cold:
.LFSB2:
.LBB18:
.L2:
.LBE18:
	.loc 1 18 9 is_stmt 1 view -0
	.loc 1 14 1 is_stmt 0 view .LVU26
	pushq	%rax
	.cfi_def_cfa_offset 16
	.loc 1 18 9 view .LVU27
	movl	%esi, %edi
.LVL9:
	.loc 1 18 9 view .LVU28
	call	fail@PLT
.LVL10:
	.loc 1 18 9 view .LVU29
	.cfi_endproc
.LFE2:
	.section	.text.sum
	.size	sum, .-sum
	.section	.text.unlikely.sum
	.size	sum.cold, .-sum.cold
.LCOLDE0:
	.section	.text.sum
.LHOTE0:
	.section	.text.first,"ax",@progbits
	.p2align 4
	.globl	first
	.type	first, @function
first:
.LFB3:
	.loc 1 27 17 is_stmt 1 view -0
	.cfi_startproc
	.loc 1 27 19 view .LVU31
	.loc 1 27 29 is_stmt 0 view .LVU32
	movl	$1, %eax
	ret
	.cfi_endproc
.LFE3:
	.size	first, .-first
	.section	.text.second,"ax",@progbits
	.p2align 4
	.globl	second
	.type	second, @function
second:
.LFB4:
	.loc 1 27 48 is_stmt 1 view -0
	.cfi_startproc
	.loc 1 27 50 view .LVU34
	.loc 1 27 60 is_stmt 0 view .LVU35
	movl	$2, %eax
	ret
	.cfi_endproc
.LFE4:
	.size	second, .-second
	.section	.text.widen,"ax",@progbits
	.p2align 4
	.globl	widen
	.type	widen, @function
widen:
.LVL11:
.LFB5:
	.loc 1 32 18 is_stmt 1 view -0
	.cfi_startproc
	.loc 1 34 5 view .LVU37
	.loc 1 34 14 is_stmt 0 view .LVU38
	leal	1(%rdi), %eax
	.loc 1 35 1 view .LVU39
	ret
	.cfi_endproc
.LFE5:
	.size	widen, .-widen
	.text
.Letext0:
	.section	.text.unlikely.sum
.Letext_cold0:
