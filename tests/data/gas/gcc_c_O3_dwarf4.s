	.file	"sample.c"
	.text
.Ltext0:
	.file 1 "sample.c"
	.section	.text.unlikely,"ax",@progbits
.LCOLDB0:
	.text
.LHOTB0:
	.p2align 4
	.section	.text.unlikely
.Ltext_cold0:
	.text
	.globl	sum
	.type	sum, @function
sum:
.LVL0:
.LFB2:
	.loc 1 14 1 view -0
	.cfi_startproc
	.loc 1 15 5 view .LVU1
	.loc 1 17 5 view .LVU2
	.loc 1 14 1 is_stmt 0 view .LVU3
	movq	%rdi, %rcx
	movl	%esi, %edi
.LVL1:
	.loc 1 17 8 view .LVU4
	testl	%esi, %esi
	js	.L2
.LVL2:
.LBB7:
	.loc 1 21 23 is_stmt 1 view .LVU5
	je	.L13
	leal	-1(%rsi), %eax
	cmpl	$2, %eax
	jbe	.L8
	movl	%esi, %edx
	movq	%rcx, %rax
	pxor	%xmm2, %xmm2
	shrl	$2, %edx
	salq	$4, %rdx
	addq	%rcx, %rdx
.LVL3:
	.p2align 4,,10
	.p2align 3
.L6:
	.loc 1 22 9 discriminator 3 view .LVU6
	.loc 1 22 18 is_stmt 0 discriminator 3 view .LVU7
	movdqu	(%rax), %xmm0
.LVL4:
.LBB8:
.LBI8:
	.loc 1 5 12 is_stmt 1 discriminator 3 view .LVU8
.LBB9:
	.loc 1 7 5 discriminator 3 view .LVU9
	.loc 1 7 5 is_stmt 0 discriminator 3 view .LVU10
	addq	$16, %rax
	.loc 1 7 14 discriminator 3 view .LVU11
	movdqa	%xmm0, %xmm1
	pmuludq	%xmm0, %xmm1
	psrlq	$32, %xmm0
	pmuludq	%xmm0, %xmm0
	pshufd	$8, %xmm1, %xmm1
	pshufd	$8, %xmm0, %xmm0
	punpckldq	%xmm0, %xmm1
.LBE9:
.LBE8:
	.loc 1 22 15 discriminator 3 view .LVU12
	paddd	%xmm1, %xmm2
.LVL5:
	.loc 1 21 33 is_stmt 1 discriminator 3 view .LVU13
	.loc 1 21 23 discriminator 3 view .LVU14
	cmpq	%rax, %rdx
	jne	.L6
	movdqa	%xmm2, %xmm0
	movl	%edi, %edx
	psrldq	$8, %xmm0
	andl	$-4, %edx
	paddd	%xmm0, %xmm2
	movdqa	%xmm2, %xmm0
	psrldq	$4, %xmm0
	paddd	%xmm0, %xmm2
	movd	%xmm2, %eax
	testb	$3, %dil
	je	.L7
.LVL6:
.L5:
	.loc 1 22 9 view .LVU15
	.loc 1 22 31 is_stmt 0 view .LVU16
	movslq	%edx, %rsi
.LVL7:
	.loc 1 22 31 view .LVU17
	leaq	0(,%rsi,4), %r8
	.loc 1 22 18 view .LVU18
	movl	(%rcx,%rsi,4), %esi
.LVL8:
.LBB14:
	.loc 1 5 12 is_stmt 1 view .LVU19
.LBB10:
	.loc 1 7 5 view .LVU20
	.loc 1 7 14 is_stmt 0 view .LVU21
	imull	%esi, %esi
.LBE10:
.LBE14:
	.loc 1 22 15 view .LVU22
	addl	%esi, %eax
.LVL9:
	.loc 1 21 33 is_stmt 1 view .LVU23
	.loc 1 21 23 view .LVU24
	.loc 1 21 33 is_stmt 0 view .LVU25
	leal	1(%rdx), %esi
	.loc 1 21 23 view .LVU26
	cmpl	%esi, %edi
	jle	.L7
	.loc 1 22 9 is_stmt 1 view .LVU27
	.loc 1 22 18 is_stmt 0 view .LVU28
	movl	4(%rcx,%r8), %esi
.LVL10:
.LBB15:
	.loc 1 5 12 is_stmt 1 view .LVU29
.LBB11:
	.loc 1 7 5 view .LVU30
	.loc 1 7 5 is_stmt 0 view .LVU31
.LBE11:
.LBE15:
	.loc 1 21 33 view .LVU32
	addl	$2, %edx
.LBB16:
.LBB12:
	.loc 1 7 14 view .LVU33
	imull	%esi, %esi
.LBE12:
.LBE16:
	.loc 1 22 15 view .LVU34
	addl	%esi, %eax
.LVL11:
	.loc 1 21 33 is_stmt 1 view .LVU35
	.loc 1 21 23 view .LVU36
	cmpl	%edx, %edi
	jle	.L7
	.loc 1 22 9 view .LVU37
	.loc 1 22 18 is_stmt 0 view .LVU38
	movl	8(%rcx,%r8), %edx
.LVL12:
.LBB17:
	.loc 1 5 12 is_stmt 1 view .LVU39
.LBB13:
	.loc 1 7 5 view .LVU40
	.loc 1 7 14 is_stmt 0 view .LVU41
	imull	%edx, %edx
.LBE13:
.LBE17:
	.loc 1 22 15 view .LVU42
	addl	%edx, %eax
.LVL13:
	.loc 1 21 33 is_stmt 1 view .LVU43
	.loc 1 21 23 view .LVU44
.L7:
	.loc 1 21 23 is_stmt 0 view .LVU45
.LBE7:
.LBB18:
.LBB19:
	.file 2 "limits.h"
	.loc 2 4 8 view .LVU46
	movl	$255, %edx
	cmpl	%edx, %eax
	cmovg	%edx, %eax
.LBE19:
.LBE18:
	.loc 1 24 5 is_stmt 1 view .LVU47
.LBB21:
.LBI18:
	.loc 2 2 19 view .LVU48
.LBB20:
	.loc 2 4 5 view .LVU49
.LBE20:
.LBE21:
	.loc 1 25 1 is_stmt 0 view .LVU50
	ret
.LVL14:
	.p2align 4,,10
	.p2align 3
.L13:
.LBB22:
	.loc 1 21 23 view .LVU51
	xorl	%eax, %eax
	ret
.L8:
	.loc 1 21 14 view .LVU52
	xorl	%edx, %edx
.LBE22:
	.loc 1 15 9 view .LVU53
	xorl	%eax, %eax
	jmp	.L5
.LVL15:
	.loc 1 15 9 view .LVU54
	.cfi_endproc
	.section	.text.unlikely
	.cfi_startproc
	.type	sum.cold, @function
sum.cold:
.LFSB2:
.L2:
	.loc 1 18 9 is_stmt 1 view -0
	.loc 1 14 1 is_stmt 0 view .LVU56
	pushq	%rax
	.cfi_def_cfa_offset 16
	.loc 1 18 9 view .LVU57
	call	fail@PLT
.LVL16:
	.loc 1 18 9 view .LVU58
	.cfi_endproc
.LFE2:
	.text
	.size	sum, .-sum
	.section	.text.unlikely
	.size	sum.cold, .-sum.cold
.LCOLDE0:
	.text
.LHOTE0:
	.p2align 4
	.globl	first
	.type	first, @function
first:
.LFB3:
	.loc 1 27 17 is_stmt 1 view -0
	.cfi_startproc
	.loc 1 27 19 view .LVU60
	.loc 1 27 29 is_stmt 0 view .LVU61
	movl	$1, %eax
	ret
	.cfi_endproc
.LFE3:
	.size	first, .-first
	.p2align 4
	.globl	second
	.type	second, @function
second:
.LFB4:
	.loc 1 27 48 is_stmt 1 view -0
	.cfi_startproc
	.loc 1 27 50 view .LVU63
	.loc 1 27 60 is_stmt 0 view .LVU64
	movl	$2, %eax
	ret
	.cfi_endproc
.LFE4:
	.size	second, .-second
	.p2align 4
	.globl	widen
	.type	widen, @function
widen:
.LVL17:
.LFB5:
	.loc 1 32 18 is_stmt 1 view -0
	.cfi_startproc
	.loc 1 34 5 view .LVU66
	.loc 1 34 14 is_stmt 0 view .LVU67
	leal	1(%rdi), %eax
	.loc 1 35 1 view .LVU68
	ret
	.cfi_endproc
.LFE5:
	.size	widen, .-widen
.Letext0:
	.section	.text.unlikely
.Letext_cold0:
